#include "platform/posix/LastTouch.h"

#include "platform/posix/FileFacts.h"

#include <fcntl.h>

#include <algorithm>
#include <deque>

namespace swabby {
namespace {

namespace fs = std::filesystem;

/// What an unpacked archive set back is the modification alone. A disk that keeps no time of birth still
/// keeps the last change of any kind, which nobody sets.
std::int64_t touchOf(const FileFacts &facts)
{
    const FileIdentity &identity = facts.identity;
    const bool hasBirth = identity.bornNanoseconds != 0;
    return std::max(identity.modifiedNanoseconds,
                    hasBirth ? identity.bornNanoseconds : identity.changedNanoseconds);
}

bool isOnAnotherMount(const FileFacts &one, const FileFacts &other)
{
    return one.mount != other.mount || one.identity.device != other.identity.device;
}

} // namespace

std::optional<std::int64_t> lastTouch(const fs::path &path, const TouchLimits &limits, const StopToken &stop)
{
    const auto top = factsOf(AT_FDCWD, path.c_str());
    if (!top || touchOf(*top) > limits.latestNanoseconds)
        return std::nullopt;
    std::int64_t last = touchOf(*top);
    std::size_t left = limits.mostEntries;
    // What somebody works on lies nearer to the top than what they installed.
    std::deque<fs::path> folders;
    if (top->identity.kind == FileKind::folder)
        folders.push_back(path);
    for (; !folders.empty(); folders.pop_front()) {
        std::error_code problem;
        fs::directory_iterator entry(folders.front(), problem);
        for (; !problem && entry != fs::directory_iterator(); entry.increment(problem)) {
            const auto facts = factsOf(AT_FDCWD, entry->path().c_str());
            if (left-- == 0 || stop.stopRequested() || !facts || isOnAnotherMount(*facts, *top) ||
                touchOf(*facts) > limits.latestNanoseconds)
                return std::nullopt;
            last = std::max(last, touchOf(*facts));
            if (facts->identity.kind == FileKind::folder)
                folders.push_back(entry->path());
        }
        if (problem)
            return std::nullopt;
    }
    return last;
}

} // namespace swabby
