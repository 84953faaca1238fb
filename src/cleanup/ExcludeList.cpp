#include "cleanup/ExcludeList.h"

#include "platform/FolderListing.h"
#include "platform/posix/MountTable.h"
#include "platform/posix/Spelling.h"

#include <algorithm>

namespace swabby {
namespace {

using Path = std::filesystem::path;

Path withoutTrailingSlash(Path path)
{
    path = path.lexically_normal();
    return path.has_filename() ? path : path.parent_path();
}

/// The path with the links above it resolved; a link at its end stays one.
Path resolvedAbove(const Path &path)
{
    std::error_code ignored;
    const Path parent = std::filesystem::weakly_canonical(path.parent_path(), ignored);
    return ignored ? path : parent / path.filename();
}

/// The same with a link at its end resolved too.
Path resolvedWhole(const Path &path)
{
    std::error_code ignored;
    const Path whole = std::filesystem::weakly_canonical(path, ignored);
    return ignored ? path : whole;
}

/// Whether the path lies at or under one of them, or contains one.
bool touchesOne(const std::vector<Path> &paths, const Path &path)
{
    return std::any_of(paths.begin(), paths.end(), [&](const Path &excluded) {
        return isAtOrUnder(path, excluded) || isAtOrUnder(excluded, path);
    });
}

} // namespace

ExcludeList::ExcludeList(const std::vector<Path> &paths)
{
    for (const Path &given : paths) {
        if (!given.is_absolute())
            continue;
        const Path path = withoutTrailingSlash(given);
        // With "..", the system goes up from where a link leads.
        const Path whole = withoutTrailingSlash(resolvedWhole(given));
        for (const Path &way : {path, resolvedAbove(path), whole})
            add(way);
        for (const Path &way : otherWaysTo(whole))
            add(way);
    }
}

ExcludeList ExcludeList::everything(const QString &problem)
{
    ExcludeList list;
    list.m_problem = problem;
    return list;
}

void ExcludeList::add(const Path &path)
{
    constexpr std::size_t mostHeld = 64;
    if (std::find(m_paths.begin(), m_paths.end(), path) != m_paths.end())
        return;
    m_paths.push_back(path);
    if (m_held.size() < mostHeld)
        m_held.push_back(std::make_shared<const Descriptor>(holdEntry(path)));
    // Not every disk that takes several spellings gives them one number.
    if (hasOtherSpelling(path))
        m_foldedPaths.push_back(folded(path));
    const PathWay way = PathWay::to(path);
    m_above.insert(way.above.begin(), way.above.end());
    if (way.itself)
        m_things.insert(*way.itself);
}

bool ExcludeList::covers(const Path &given) const
{
    if (isEmpty() || !m_problem.isEmpty())
        return !m_problem.isEmpty();
    const Path path = withoutTrailingSlash(given);
    const auto isOne = [this](const Thing &thing) { return m_things.contains(thing); };
    const auto isOnTheWay = [&](const PathWay &way) {
        return std::any_of(way.above.begin(), way.above.end(), isOne) ||
               (way.itself && (isOne(*way.itself) || m_above.contains(*way.itself)));
    };
    const auto hasName = [this](const Path &one) {
        return touchesOne(m_paths, one) || (!m_foldedPaths.empty() && touchesOne(m_foldedPaths, folded(one)));
    };
    const PathWay way = PathWay::to(path);
    if (hasName(path) || isOnTheWay(way))
        return true;
    if (!way.hasLink)
        return false;
    const Path resolved = resolvedAbove(path);
    return hasName(resolved) || isOnTheWay(PathWay::to(resolved));
}

} // namespace swabby
