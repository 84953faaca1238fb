#include "platform/posix/FileFacts.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace swabby {
namespace {

std::int64_t nanosecondsOf(const timespec &time)
{
    constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
    return nanosecondsPerSecond * time.tv_sec + time.tv_nsec;
}

} // namespace

std::optional<FileFacts> factsOf(int folder, const char *name)
{
    struct stat facts = {};
    const bool isItself = *name == '\0';
    if ((isItself ? ::fstat(folder, &facts) : ::fstatat(folder, name, &facts, AT_SYMLINK_NOFOLLOW)) != 0)
        return std::nullopt;
    FileIdentity identity = FileIdentity::from(facts);
    identity.bornNanoseconds = nanosecondsOf(facts.st_birthtimespec);
    return FileFacts{identity, identity.device};
}

FileIdentity FileIdentity::from(const struct ::stat &facts)
{
    // A disk's number has a sign there, which means nothing.
    return {.device = static_cast<std::uint32_t>(facts.st_dev),
            .inode = facts.st_ino,
            .kind = kindOfMode(facts.st_mode),
            .size = facts.st_size,
            .modifiedNanoseconds = nanosecondsOf(facts.st_mtimespec),
            .changedNanoseconds = nanosecondsOf(facts.st_ctimespec)};
}

} // namespace swabby
