#pragma once

#include "platform/linux/IconTheme.h"

#include <filesystem>
#include <string>
#include <unordered_map>
#include <vector>

namespace swabby {

/// The icon themes of the desktop, each a folder of that name in several places. Reads a theme's index when
/// it is first asked for. Not safe for several threads at once.
class IconThemes {
public:
    struct Folders {
        std::vector<std::string> themes;   ///< hold the themes, the first one that has a file wins
        std::vector<std::string> pictures; ///< hold pictures of programs that belong to no theme
    };

    explicit IconThemes(Folders folders) : m_folders(std::move(folders)) {}

    /// The picture file of that name, PNG or SVG, that shows best at that size: from the theme, those it
    /// builds on, the theme that every application puts its icon into, and no theme at all, in this order.
    /// Empty when there is none. Blocks for the disk.
    std::string find(const std::string &name, int pixels, const std::string &theme);

private:
    std::vector<std::string> inOrder(const std::string &theme);
    const IconTheme &theme(const std::string &name);
    std::string findIn(const std::string &theme, const std::string &name, int pixels);

    const Folders m_folders;
    std::unordered_map<std::string, IconTheme> m_themes;
};

} // namespace swabby
