#include "platform/FileIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace swabby {
namespace {

constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

std::int64_t nanosecondsOf(const statx_timestamp &time)
{
    return nanosecondsPerSecond * time.tv_sec + time.tv_nsec;
}

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
    return path.empty() ? std::nullopt : in(AT_FDCWD, path.c_str());
}

std::optional<FileIdentity> FileIdentity::in(int folder, const char *name)
{
    struct statx facts = {};
    const int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_EMPTY_PATH;
    if (::statx(folder, name, flags, STATX_BASIC_STATS | STATX_BTIME, &facts) != 0)
        return std::nullopt;
    return FileIdentity{.device = ::makedev(facts.stx_dev_major, facts.stx_dev_minor),
                        .inode = facts.stx_ino,
                        .kind = kindOf(facts.stx_mode),
                        .size = static_cast<std::int64_t>(facts.stx_size),
                        .modifiedNanoseconds = nanosecondsOf(facts.stx_mtime),
                        .changedNanoseconds = nanosecondsOf(facts.stx_ctime),
                        .bornNanoseconds =
                            (facts.stx_mask & STATX_BTIME) != 0 ? nanosecondsOf(facts.stx_btime) : 0};
}

FileIdentity FileIdentity::from(const struct ::stat &facts)
{
    return {.device = facts.st_dev,
            .inode = facts.st_ino,
            .kind = kindOf(facts.st_mode),
            .size = facts.st_size,
            .modifiedNanoseconds = nanosecondsPerSecond * facts.st_mtim.tv_sec + facts.st_mtim.tv_nsec,
            .changedNanoseconds = nanosecondsPerSecond * facts.st_ctim.tv_sec + facts.st_ctim.tv_nsec};
}

bool FileIdentity::isSameEntry(const FileIdentity &other) const
{
    const bool isSameBirth =
        bornNanoseconds == other.bornNanoseconds || bornNanoseconds == 0 || other.bornNanoseconds == 0;
    return device == other.device && inode == other.inode && kind == other.kind && isSameBirth;
}

bool FileIdentity::isSameThing(const FileIdentity &other) const
{
    const bool isSameContent = size == other.size && modifiedNanoseconds == other.modifiedNanoseconds;
    return isSameEntry(other) && (kind == FileKind::folder || isSameContent);
}

bool FileIdentity::isUntouched(const FileIdentity &other) const
{
    const bool isSameList =
        modifiedNanoseconds == other.modifiedNanoseconds && changedNanoseconds == other.changedNanoseconds;
    return isSameThing(other) && (kind != FileKind::folder || isSameList);
}

} // namespace swabby
