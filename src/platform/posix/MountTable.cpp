#include "platform/posix/MountTable.h"

#include "platform/FolderListing.h"
#include "platform/TextScan.h"

#include <string>

namespace swabby {
namespace {

using Path = std::filesystem::path;

/// A folder of a disk, and where it is seen.
struct Mount {
    std::string_view disk;
    Path folder; ///< from the top of the disk
    Path place;
};

/// Blanks and their like are written as a backslash and three octal digits.
Path unescaped(std::string_view text)
{
    constexpr int octal = 8;
    std::string plain;
    for (std::size_t index = 0; index < text.size(); ++index) {
        int code = 0;
        if (text[index] == '\\' && text.size() - index > 3 &&
            std::from_chars(&text[index + 1], &text[index] + 4, code, octal).ptr == &text[index] + 4) {
            plain += static_cast<char>(code);
            index += 3;
        } else {
            plain += text[index];
        }
    }
    return plain;
}

std::vector<Mount> mountsOf(std::string_view table)
{
    std::vector<Mount> mounts;
    forEachLine(table, [&](std::string_view line) {
        // Two numbers, the disk, the folder, the place, and more that nobody needs here.
        constexpr std::size_t needed = 5;
        if (const auto pieces = piecesOf(line); pieces.size() >= needed && pieces[3].starts_with('/'))
            mounts.push_back({pieces[2], unescaped(pieces[3]), unescaped(pieces[4])});
        return true;
    });
    return mounts;
}

/// Where the path ends up when the one folder on its way is exchanged for the other.
Path moved(const Path &path, const Path &from, const Path &to)
{
    return path == from ? to : to / path.lexically_relative(from);
}

} // namespace

std::vector<Path> otherWaysTo(const Path &path, std::string_view table)
{
    const std::vector<Mount> mounts = mountsOf(table);
    const Mount *own = nullptr;
    for (const Mount &mount : mounts)
        if (isAtOrUnder(path, mount.place) && (own == nullptr || isAtOrUnder(mount.place, own->place)))
            own = &mount; // the last of several at one place hides the others
    std::vector<Path> ways;
    if (own == nullptr)
        return ways;
    const Path onDisk = moved(path, own->place, own->folder);
    for (const Mount &mount : mounts) {
        if (mount.disk != own->disk)
            continue;
        if (isAtOrUnder(mount.folder, onDisk))
            ways.push_back(mount.place);
        else if (isAtOrUnder(onDisk, mount.folder))
            ways.push_back(moved(onDisk, mount.folder, mount.place));
    }
    std::erase(ways, path);
    return ways;
}

} // namespace swabby
