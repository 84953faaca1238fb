#include "cleanup/DuplicateFinder.h"

#include "cleanup/duplicates/ByteComparison.h"
#include "cleanup/duplicates/Contents.h"

#include <QtCore/QByteArray>

#include <algorithm>
#include <functional>
#include <map>
#include <mutex>

namespace swabby {
namespace {

using Sets = std::vector<CandidateSet>;

std::int64_t bytesOf(const Candidates &candidates, const CandidateSet &set)
{
    return candidates.size(set.front()) * static_cast<std::int64_t>(set.size());
}

std::int64_t bytesOf(const Candidates &candidates, const Sets &sets)
{
    std::int64_t bytes = 0;
    for (const CandidateSet &set : sets)
        bytes += bytesOf(candidates, set);
    return bytes;
}

void append(Sets &sets, Sets more)
{
    std::move(more.begin(), more.end(), std::back_inserter(sets));
}

/// The sets of too many members to be read side by side, which the others lose.
Sets takeCrowds(Sets &sets)
{
    const auto crowds = std::partition(
        sets.begin(), sets.end(), [](const CandidateSet &set) { return set.size() <= mostComparedAtOnce; });
    Sets taken(std::make_move_iterator(crowds), std::make_move_iterator(sets.end()));
    sets.erase(crowds, sets.end());
    return taken;
}

/// Parts each set by a key of its members, found on all cores. A member without a key or with one of its own
/// is in none.
template <typename Key>
Sets partedBy(const Sets &sets, const StopToken &stop,
              const std::function<std::optional<Key>(CandidateIndex, ReadBuffer &)> &keyOf)
{
    struct Member {
        std::size_t set;
        CandidateIndex index;
        std::optional<Key> key;
    };
    std::vector<Member> members;
    for (std::size_t set = 0; set < sets.size(); ++set)
        for (const CandidateIndex index : sets[set])
            members.push_back({set, index, {}});
    onAllCores(members.size(), stop, [&](std::size_t number, ReadBuffer &buffer) {
        members[number].key = keyOf(members[number].index, buffer);
    });

    std::map<std::pair<std::size_t, Key>, CandidateSet> parts;
    for (Member &member : members)
        if (member.key)
            parts[{member.set, *std::move(member.key)}].push_back(member.index);
    Sets parted;
    for (auto &[key, part] : parts)
        if (part.size() > 1)
            parted.push_back(std::move(part));
    return parted;
}

/// What is told apart by its ends drops out of the sets for next to nothing.
Sets partedByEnds(const Candidates &candidates, const Sets &crowds, ReadMeter &meter, const StopToken &stop)
{
    Sets parted = partedBy<std::uint64_t>(
        crowds, stop, [&](CandidateIndex index, ReadBuffer &buffer) -> std::optional<std::uint64_t> {
            const auto file = candidates.open(index);
            return file ? endsFingerprint(*file, buffer) : std::nullopt;
        });
    if (!crowds.empty())
        meter.count(bytesOf(candidates, crowds) - bytesOf(candidates, parted),
                    candidates.name(crowds.front().front()));
    return parted;
}

Sets partedByDigest(const Candidates &candidates, const Sets &crowds, ReadMeter &meter, const StopToken &stop)
{
    return partedBy<std::string>(
        crowds, stop, [&](CandidateIndex index, ReadBuffer &buffer) -> std::optional<std::string> {
            std::int64_t unread = candidates.size(index);
            const auto onRead = [&](std::int64_t bytes) {
                unread -= bytes;
                meter.count(bytes, candidates.name(index));
                return !meter.stopRequested();
            };
            const auto file = candidates.open(index);
            const auto digest = file ? sha256Of(*file, buffer, onRead) : std::nullopt;
            meter.count(unread, candidates.name(index));
            return digest;
        });
}

Sets partedByBytes(const Candidates &candidates, Sets few, ReadMeter &meter, const StopToken &stop)
{
    // The longest first, or one core would end up reading the last large files alone.
    std::sort(few.begin(), few.end(), [&](const CandidateSet &left, const CandidateSet &right) {
        return bytesOf(candidates, left) > bytesOf(candidates, right);
    });
    Sets parted;
    std::mutex guard;
    onAllCores(few.size(), stop, [&](std::size_t number, ReadBuffer &buffer) {
        Sets equal = equalSetsOf(candidates, few[number], buffer, meter);
        const std::lock_guard lock(guard);
        append(parted, std::move(equal));
    });
    return parted;
}

DuplicateGroup groupOf(const Candidates &candidates, const CandidateSet &set)
{
    DuplicateGroup group;
    group.sizeBytes = candidates.size(set.front());
    for (const CandidateIndex index : set) {
        group.paths.push_back(candidates.path(index));
        group.identities.push_back(candidates.identity(index));
    }
    return group;
}

} // namespace

std::vector<DuplicateGroup> DuplicateFinder::scan(const std::vector<std::filesystem::path> &folders,
                                                  const ExcludeList &excludes, const ScanControl &control,
                                                  FirstBy firstBy)
{
    const Candidates candidates(folders, control.stop);
    Sets few = candidates.ofSameSize(excludes, control.stop);
    ReadMeter meter(control, bytesOf(candidates, few));

    append(few, partedByEnds(candidates, takeCrowds(few), meter, control.stop));
    Sets equal = partedByDigest(candidates, takeCrowds(few), meter, control.stop);
    append(equal, partedByBytes(candidates, std::move(few), meter, control.stop));
    if (control.stop.stopRequested())
        return {};
    meter.finish();

    std::sort(equal.begin(), equal.end()); // in the order found, which wins among equally wasteful groups
    std::vector<DuplicateGroup> groups;
    groups.reserve(equal.size());
    for (const CandidateSet &set : equal)
        groups.push_back(groupOf(candidates, withKeptFirst(candidates, set, firstBy)));
    std::ranges::stable_sort(groups, std::ranges::greater(), &DuplicateGroup::wastedBytes);
    return groups;
}

std::optional<std::string> DuplicateFinder::streamingSHA256(const std::filesystem::path &path,
                                                            const StopToken &stop)
{
    const auto file = RegularFile::open(path);
    if (!file || stop.stopRequested())
        return std::nullopt;
    ReadBuffer buffer;
    const auto digest = sha256Of(*file, buffer, [&](std::int64_t) { return !stop.stopRequested(); });
    return digest ? std::optional(QByteArray::fromStdString(*digest).toHex().toStdString()) : std::nullopt;
}

} // namespace swabby
