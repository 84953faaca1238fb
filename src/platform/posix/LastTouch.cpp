#include "platform/posix/LastTouch.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <deque>

namespace swabby {
namespace {

namespace fs = std::filesystem;

std::int64_t nanosecondsOf(const struct statx_timestamp &time)
{
    constexpr std::int64_t nanoseconds = 1'000'000'000;
    return time.tv_sec * nanoseconds + time.tv_nsec;
}

/// What an unpacked archive set back is the modification alone. A disk that keeps no time of birth still
/// keeps the last change of any kind, which nobody sets.
std::int64_t touchOf(const struct statx &facts)
{
    const bool hasBirth = (facts.stx_mask & STATX_BTIME) != 0;
    return std::max(nanosecondsOf(facts.stx_mtime),
                    nanosecondsOf(hasBirth ? facts.stx_btime : facts.stx_ctime));
}

std::optional<struct statx> factsOf(const fs::path &path)
{
    struct statx facts = {};
    constexpr unsigned wanted = STATX_TYPE | STATX_MTIME | STATX_CTIME | STATX_BTIME | STATX_MNT_ID;
    if (::statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, wanted, &facts) != 0)
        return std::nullopt;
    return facts;
}

bool isOnAnotherMount(const struct statx &one, const struct statx &other)
{
    return one.stx_mnt_id != other.stx_mnt_id || one.stx_dev_major != other.stx_dev_major ||
           one.stx_dev_minor != other.stx_dev_minor;
}

} // namespace

std::optional<std::int64_t> lastTouch(const fs::path &path, const TouchLimits &limits, const StopToken &stop)
{
    const auto top = factsOf(path);
    if (!top || touchOf(*top) > limits.latestNanoseconds)
        return std::nullopt;
    std::int64_t last = touchOf(*top);
    std::size_t left = limits.mostEntries;
    // What somebody works on lies nearer to the top than what they installed.
    std::deque<fs::path> folders;
    if (S_ISDIR(top->stx_mode))
        folders.push_back(path);
    for (; !folders.empty(); folders.pop_front()) {
        std::error_code problem;
        fs::directory_iterator entry(folders.front(), problem);
        for (; !problem && entry != fs::directory_iterator(); entry.increment(problem)) {
            const auto facts = factsOf(entry->path());
            if (left-- == 0 || stop.stopRequested() || !facts || isOnAnotherMount(*facts, *top) ||
                touchOf(*facts) > limits.latestNanoseconds)
                return std::nullopt;
            last = std::max(last, touchOf(*facts));
            if (S_ISDIR(facts->stx_mode))
                folders.push_back(entry->path());
        }
        if (problem)
            return std::nullopt;
    }
    return last;
}

} // namespace swabby
