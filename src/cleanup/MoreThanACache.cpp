#include "cleanup/MoreThanACache.h"

#include "platform/FolderListing.h"

#include <fnmatch.h>

#include <algorithm>

namespace swabby {
namespace {

namespace fs = std::filesystem;

/// "*" in the pattern stands for any letters.
bool isCalledLike(const fs::path &name, const fs::path &pattern)
{
    return ::fnmatch(pattern.c_str(), name.c_str(), FNM_CASEFOLD) == 0;
}

/// Whether something below the folder has names like these, one below the other.
bool holds(const fs::path &folder, fs::path::iterator pattern, const fs::path::iterator &end)
{
    if (pattern == end)
        return true;
    const fs::path wanted = *pattern++;
    const std::vector<fs::path> children = childrenOf(folder);
    return std::any_of(children.begin(), children.end(), [&](const fs::path &child) {
        return isCalledLike(child.filename(), wanted) && holds(child, pattern, end);
    });
}

} // namespace

bool isMoreThanACache(const CleanupPlaces &places, const fs::path &folder)
{
    const fs::path below = folder.lexically_relative(places.cachesRoot);
    return std::any_of(places.moreThanCaches.begin(), places.moreThanCaches.end(), [&](const auto &pattern) {
        const auto [name, rest] =
            std::mismatch(below.begin(), below.end(), pattern.begin(), pattern.end(), isCalledLike);
        return name == below.end() && holds(folder, rest, pattern.end());
    });
}

} // namespace swabby
