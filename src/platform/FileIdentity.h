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
    std::int64_t changedNanoseconds = 0;  ///< content or rights, since 1970; nobody can set it back
    std::int64_t bornNanoseconds = 0;     ///< since 1970; 0 where the disk does not keep it

    /// No value when nothing is there or it cannot be looked at. Does not read the file.
    static std::optional<FileIdentity> of(const std::filesystem::path &path);
    /// The same of a name in an open folder; of what is open itself when the name is empty.
    static std::optional<FileIdentity> in(int folder, const char *name);
    /// From what the system already said, which leaves out the birth.
    static FileIdentity from(const struct ::stat &facts);

    /// Whether that is the same file or folder, whatever became of it: an inode alone is soon used again.
    bool isSameEntry(const FileIdentity &other) const;
    /// Whether that is the same thing: the same entry, of a file also with its size and time, since a
    /// folder's time changes with its children.
    bool isSameThing(const FileIdentity &other) const;
    /// The same, and of a folder also that nothing was put in, taken out or renamed directly in it.
    bool isUntouched(const FileIdentity &other) const;
};

} // namespace swabby
