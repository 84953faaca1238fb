#pragma once

#include "cleanup/CacheEntry.h"
#include "cleanup/Search.h"

#include <vector>

/// Finds data that is made again when it is missed, and deletes it. Every call blocks for the disk and for
/// tools: background work only.
namespace swabby::CacheCleaner {

/// The known places that hold more than a megabyte, largest first.
std::vector<CacheEntry> scan(const Search &search);

/// Those of them that developers' tools fill.
std::vector<CacheEntry> scanBuildTools(const Search &search);

/// The Trash, if it is one of them.
std::vector<CacheEntry> scanTrash(const Search &search);

/// The eight largest other folders of caches of more than twenty megabytes, largest first.
std::vector<CacheEntry> scanUnknownCaches(const Search &search);

/// Deletes these outright, of the Trash its contents, then lets the package managers drop what they keep.
/// Says of each entry, in order, whether nothing of it stayed. When stopped, what follows the entry at hand
/// stays.
std::vector<bool> clean(const Machine &machine, const std::vector<CacheEntry> &entries,
                        const ExcludeList &excludes, const StopToken &stop = {});

} // namespace swabby::CacheCleaner
