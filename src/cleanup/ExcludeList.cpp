#include "cleanup/ExcludeList.h"

#include "platform/FolderListing.h"

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

} // namespace

ExcludeList::ExcludeList(const std::vector<Path> &paths)
{
    for (const Path &given : paths) {
        if (!given.is_absolute())
            continue;
        const Path path = withoutTrailingSlash(given);
        for (const Path &way : {path, resolvedAbove(path), resolvedWhole(path)})
            if (std::find(m_paths.begin(), m_paths.end(), way) == m_paths.end())
                m_paths.push_back(way);
    }
}

bool ExcludeList::covers(const Path &given) const
{
    if (m_paths.empty())
        return false;
    const Path path = withoutTrailingSlash(given);
    const Path resolved = resolvedAbove(path);
    return std::any_of(m_paths.begin(), m_paths.end(), [&](const Path &excluded) {
        return isAtOrUnder(path, excluded) || isAtOrUnder(resolved, excluded) ||
               isAtOrUnder(excluded, path) || isAtOrUnder(excluded, resolved);
    });
}

} // namespace swabby
