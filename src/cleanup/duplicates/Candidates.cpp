#include "cleanup/duplicates/Candidates.h"

#include "cleanup/duplicates/Reading.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace swabby {

Candidates::Candidates(const std::vector<std::filesystem::path> &folders, const StopToken &stop)
{
    for (const std::filesystem::path &path : folders) {
        auto opened = path.is_absolute() ? OpenFolder::open(path) : std::nullopt;
        if (!opened)
            continue;
        const auto folder = static_cast<std::uint32_t>(m_folders.size());
        opened->forEachName([&](const char *name) {
            m_files.push_back({name, {}, folder});
            return !stop.stopRequested();
        });
        m_folders.push_back({path, *std::move(opened)});
    }
    identify(stop);
    // A link takes no part: to remove it would free nothing, and what it leads to may be its only copy.
    std::erase_if(m_files, [](const File &file) {
        return file.identity.kind != FileKind::file || file.identity.size < smallestSize;
    });
}

void Candidates::identify(const StopToken &stop)
{
    constexpr std::size_t portion = 256; // so that taking turns costs nothing beside it
    onAllCores((m_files.size() + portion - 1) / portion, stop, [this](std::size_t number, ReadBuffer &) {
        const std::size_t end = std::min(m_files.size(), (number + 1) * portion);
        for (std::size_t index = number * portion; index < end; ++index) {
            File &file = m_files[index];
            if (const auto identity = m_folders[file.folder].opened.identityOf(file.name.c_str()))
                file.identity = *identity;
        }
    });
}

std::filesystem::path Candidates::path(CandidateIndex index) const
{
    const File &file = m_files[index];
    return m_folders[file.folder].path / file.name;
}

std::optional<RegularFile> Candidates::open(CandidateIndex index) const
{
    const File &file = m_files[index];
    auto opened = m_folders[file.folder].opened.openFile(file.name.c_str());
    if (opened && !opened->identity().isSameThing(file.identity))
        return std::nullopt;
    return opened;
}

std::vector<CandidateSet> Candidates::ofSameSize(const ExcludeList &excludes, const StopToken &stop) const
{
    CandidateSet order(m_files.size());
    std::iota(order.begin(), order.end(), CandidateIndex(0));
    std::sort(order.begin(), order.end(), [this](CandidateIndex left, CandidateIndex right) {
        const auto key = [this](CandidateIndex index) {
            const FileIdentity &identity = m_files[index].identity;
            return std::tuple(identity.size, identity.device, identity.inode, index);
        };
        return key(left) < key(right);
    });

    std::vector<CandidateSet> sets;
    const CandidateIndex *const end = order.data() + order.size();
    for (const CandidateIndex *first = order.data(); first != end && !stop.stopRequested();) {
        const CandidateIndex *last = first;
        while (last != end && size(*last) == size(*first))
            ++last;
        if (CandidateSet set = partners(first, last, excludes, stop); set.size() > 1)
            sets.push_back(std::move(set));
        first = last;
    }
    return sets;
}

CandidateSet Candidates::partners(const CandidateIndex *begin, const CandidateIndex *end,
                                  const ExcludeList &excludes, const StopToken &stop) const
{
    CandidateSet set;
    if (end - begin < 2)
        return set;
    const auto sameFile = [this](CandidateIndex left, CandidateIndex right) {
        return identity(left).device == identity(right).device &&
               identity(left).inode == identity(right).inode;
    };
    for (const CandidateIndex *way = begin; way != end && !stop.stopRequested();) {
        const CandidateIndex *const first = way;
        bool mustStay = false; // when one way to it is excluded: the others may lead to the same name
        for (; way != end && sameFile(*way, *first); ++way)
            mustStay = mustStay || (!excludes.isEmpty() && excludes.covers(path(*way)));
        if (!mustStay)
            set.push_back(*first);
    }
    std::sort(set.begin(), set.end());
    return set;
}

} // namespace swabby
