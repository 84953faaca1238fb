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

/// The folder of caches that it is or lies in: that of a sandboxed application, or everybody's.
fs::path rootOf(const CleanupPlaces &places, const fs::path &folder)
{
    if (places.sandboxes.empty() || isUnder(folder, places.cachesRoot) || !isUnder(folder, places.sandboxes))
        return places.cachesRoot;
    return places.sandboxes / *folder.lexically_relative(places.sandboxes).begin() / "cache";
}

} // namespace

bool isMoreThanACache(const CleanupPlaces &places, const fs::path &folder)
{
    const fs::path root = rootOf(places, folder);
    const fs::path below = folder == root ? fs::path() : folder.lexically_relative(root);
    if (root.empty())
        return false;
    return std::any_of(places.moreThanCaches.begin(), places.moreThanCaches.end(), [&](const auto &pattern) {
        const auto [name, rest] =
            std::mismatch(below.begin(), below.end(), pattern.begin(), pattern.end(), isCalledLike);
        return name == below.end() && holds(folder, rest, pattern.end());
    });
}

} // namespace swabby
