#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <filesystem>

namespace swabby {

/// Whose icon is wanted.
struct IconOwner {
    std::filesystem::path program; ///< its program file, or what holds it; empty when unknown
    QString application{};         ///< the name of the application it belongs to; empty when it is none
    QString icon{};                ///< named by whatever starts it, and preferred; empty for none

    bool operator==(const IconOwner &) const = default;
};

/// How the icon will be shown.
struct IconRequest {
    int pixels = 0;  ///< the edge of the square it fills
    QString theme{}; ///< the icon theme of the desktop; empty where there is none

    bool operator==(const IconRequest &) const = default;
};

/// No icon's file is larger; one that is counts as none.
inline constexpr std::int64_t largestIconFile = 4 * 1024 * 1024;

/// Finds the icons of programs.
class ProgramIcons {
public:
    virtual ~ProgramIcons() = default;

    /// The content of the picture file that fits best, PNG or SVG by its name; empty when the program has
    /// none. Nobody has looked whether it is a sound picture. Blocks for the disk: background work only.
    virtual QByteArray picture(const IconOwner &owner, const IconRequest &request) = 0;
};

} // namespace swabby
