#pragma once

#include <optional>
#include <string>
#include <vector>

namespace swabby {

/// A program with which people install and remove what comes in packages.
struct SoftwareManager {
    std::string name;    ///< as its menu entry calls it
    std::string program; ///< the file's path
    std::vector<std::string> arguments;
};

/// The one that suits the running desktop best, by the menu entries in these folders, the first of a name
/// counting: one that is known, else one that shows software to other programs. No value when none is
/// installed. Blocks for the disk.
std::optional<SoftwareManager> findSoftwareManager(const std::vector<std::string> &entryFolders,
                                                   const std::string &desktops,
                                                   const std::vector<std::string> &searched);

} // namespace swabby
