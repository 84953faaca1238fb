#include "cleanup/duplicates/ByteComparison.h"

#include "cleanup/duplicates/Contents.h"

#include <algorithm>
#include <cstring>

namespace swabby {
namespace {

struct Member {
    CandidateIndex index;
    RegularFile file;
};

/// Files that are equal as far as they have been read.
struct EqualSoFar {
    std::vector<Member> members;
    std::int64_t known = 0; ///< bytes from the beginning
    bool isEndKnown = false;
};

struct Range {
    std::int64_t offset = 0;
    std::int64_t size = 0;
    bool isEnd = false;
};

/// How much of each so many files can be read at once.
std::size_t chunkSizeFor(std::size_t members)
{
    return std::min(ReadBuffer::largestChunk, ReadBuffer::size / members);
}

/// What to read next: the beginning, then the end, where most differences are, then what is between them.
Range nextRange(const EqualSoFar &group, std::int64_t fileSize)
{
    const auto chunkSize = static_cast<std::int64_t>(chunkSizeFor(group.members.size()));
    if (group.known == 0)
        return {0, std::min(endSize, fileSize)};
    const std::int64_t left = fileSize - group.known - (group.isEndKnown ? endSize : 0);
    if (!group.isEndKnown && left > chunkSize)
        return {fileSize - endSize, endSize, true};
    return {group.known, std::min(left, chunkSize)};
}

class ByteComparison {
public:
    ByteComparison(std::int64_t fileSize, ReadBuffer &buffer, ReadMeter &meter)
        : m_fileSize(fileSize), m_buffer(buffer), m_meter(meter)
    {
    }

    std::vector<CandidateSet> compare(std::vector<Member> members, const Candidates &candidates)
    {
        std::vector<CandidateSet> equal;
        std::vector<EqualSoFar> open;
        open.push_back({std::move(members)});
        while (!open.empty() && !m_meter.stopRequested()) {
            EqualSoFar group = std::move(open.back());
            open.pop_back();
            if (group.members.size() < 2)
                continue;
            const Range range = nextRange(group, m_fileSize);
            if (range.size == 0)
                equal.push_back(unchanged(group));
            else
                split(std::move(group), range, open, candidates);
        }
        return equal;
    }

    std::int64_t bytesRead() const { return m_bytesRead; }

private:
    static CandidateSet unchanged(const EqualSoFar &group)
    {
        CandidateSet set;
        for (const Member &member : group.members)
            if (!member.file.hasChanged())
                set.push_back(member.index);
        return set;
    }

    /// Reads one more range of each and puts those that are still alike together.
    void split(EqualSoFar group, const Range &range, std::vector<EqualSoFar> &parts,
               const Candidates &candidates)
    {
        const auto size = static_cast<std::size_t>(range.size);
        const std::size_t firstPart = parts.size();
        const std::size_t chunkSize = chunkSizeFor(group.members.size());
        std::vector<const char *> samples; // what the members of each part hold in this range
        for (std::size_t slot = 0; slot < group.members.size() && !m_meter.stopRequested(); ++slot) {
            Member &member = group.members[slot];
            char *const bytes = m_buffer.at(slot * chunkSize);
            if (range.isEnd) // so the whole is read unless the ends differ
                member.file.expectWholeReading();
            if (!member.file.readAt(range.offset, bytes, size))
                continue;
            m_bytesRead += range.size;
            m_meter.count(range.size, candidates.name(member.index));
            const auto alike = std::find_if(samples.begin(), samples.end(), [&](const char *sample) {
                return std::memcmp(sample, bytes, size) == 0;
            });
            const auto part = firstPart + static_cast<std::size_t>(alike - samples.begin());
            if (alike == samples.end()) {
                samples.push_back(bytes);
                parts.push_back({{},
                                 range.isEnd ? group.known : range.offset + range.size,
                                 group.isEndKnown || range.isEnd});
            }
            parts[part].members.push_back(std::move(member));
        }
    }

    const std::int64_t m_fileSize;
    ReadBuffer &m_buffer;
    ReadMeter &m_meter;
    std::int64_t m_bytesRead = 0;
};

} // namespace

std::vector<CandidateSet> equalSetsOf(const Candidates &candidates, const CandidateSet &set,
                                      ReadBuffer &buffer, ReadMeter &meter)
{
    std::vector<Member> members;
    for (const CandidateIndex index : set)
        if (auto file = candidates.open(index))
            members.push_back({index, *std::move(file)});

    const std::int64_t size = candidates.size(set.front());
    ByteComparison comparison(size, buffer, meter);
    auto equal = comparison.compare(std::move(members), candidates);
    std::erase_if(equal, [](const CandidateSet &some) { return some.size() < 2; });
    meter.count(size * static_cast<std::int64_t>(set.size()) - comparison.bytesRead(),
                candidates.name(set.front()));
    return equal;
}

} // namespace swabby
