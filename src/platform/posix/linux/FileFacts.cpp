#include "platform/posix/FileFacts.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace swabby {
namespace {

template <typename Time>
std::int64_t nanosecondsOf(const Time &time)
{
    constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
    return nanosecondsPerSecond * time.tv_sec + time.tv_nsec;
}

} // namespace

std::optional<FileFacts> factsOf(int folder, const char *name)
{
    struct statx facts = {};
    const int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_EMPTY_PATH;
    if (::statx(folder, name, flags, STATX_BASIC_STATS | STATX_BTIME | STATX_MNT_ID, &facts) != 0)
        return std::nullopt;
    const bool hasBirth = (facts.stx_mask & STATX_BTIME) != 0;
    const FileIdentity identity = {.device = ::makedev(facts.stx_dev_major, facts.stx_dev_minor),
                                   .inode = facts.stx_ino,
                                   .kind = kindOfMode(facts.stx_mode),
                                   .size = static_cast<std::int64_t>(facts.stx_size),
                                   .modifiedNanoseconds = nanosecondsOf(facts.stx_mtime),
                                   .changedNanoseconds = nanosecondsOf(facts.stx_ctime),
                                   .bornNanoseconds = hasBirth ? nanosecondsOf(facts.stx_btime) : 0};
    return FileFacts{identity, (facts.stx_mask & STATX_MNT_ID) != 0 ? facts.stx_mnt_id : identity.device};
}

FileIdentity FileIdentity::from(const struct ::stat &facts)
{
    return {.device = facts.st_dev,
            .inode = facts.st_ino,
            .kind = kindOfMode(facts.st_mode),
            .size = facts.st_size,
            .modifiedNanoseconds = nanosecondsOf(facts.st_mtim),
            .changedNanoseconds = nanosecondsOf(facts.st_ctim)};
}

} // namespace swabby
