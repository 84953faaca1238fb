#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

struct stat;

namespace swabby {

enum class FileKind { file, folder, link, other };

/// What a path led to when somebody looked, so that it can be told later whether it still does. The path's
/// last part is never followed when it is a link.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    FileKind kind = FileKind::other;
    std::int64_t size = 0;                ///< bytes
    std::int64_t modifiedNanoseconds = 0; ///< since 1970

    /// No value when nothing is there or it cannot be looked at. Does not read the file.
    static std::optional<FileIdentity> of(const std::filesystem::path &path);
    /// From what the system already said.
    static FileIdentity from(const struct ::stat &facts);

    /// Whether that is the same thing: by device and inode, a file also by its size and time, since a
    /// folder's time changes with its children.
    bool isSameThing(const FileIdentity &other) const;
};

} // namespace swabby
