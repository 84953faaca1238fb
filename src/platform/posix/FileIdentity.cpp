#include "platform/FileIdentity.h"

#include <sys/stat.h>

namespace swabby {
namespace {

FileKind kindOf(mode_t mode)
{
    if (S_ISREG(mode))
        return FileKind::file;
    if (S_ISDIR(mode))
        return FileKind::folder;
    return S_ISLNK(mode) ? FileKind::link : FileKind::other;
}

} // namespace

std::optional<FileIdentity> FileIdentity::of(const std::filesystem::path &path)
{
    struct stat facts = {};
    if (::lstat(path.c_str(), &facts) != 0)
        return std::nullopt;
    return from(facts);
}

FileIdentity FileIdentity::from(const struct ::stat &facts)
{
    constexpr std::int64_t nanoseconds = 1'000'000'000;
    return {.device = facts.st_dev,
            .inode = facts.st_ino,
            .kind = kindOf(facts.st_mode),
            .size = facts.st_size,
            .modifiedNanoseconds = facts.st_mtim.tv_sec * nanoseconds + facts.st_mtim.tv_nsec};
}

bool FileIdentity::isSameThing(const FileIdentity &other) const
{
    const bool isSamePlace = device == other.device && inode == other.inode && kind == other.kind;
    const bool isSameContent = size == other.size && modifiedNanoseconds == other.modifiedNanoseconds;
    return isSamePlace && (kind == FileKind::folder || isSameContent);
}

} // namespace swabby
