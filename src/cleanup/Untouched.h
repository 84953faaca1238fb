#pragma once

#include "cleanup/DeepScanItem.h"
#include "cleanup/Search.h"

#include <vector>

namespace swabby {

/// Whole days from a time in nanoseconds since 1970 to one in seconds.
std::int64_t daysBetween(std::int64_t nanoseconds, double now);

constexpr std::int64_t anyAge = 0; ///< of days

/// Those that were left alone for so many days, with the days of each: since it was last modified, as they
/// came, or, where the machine goes by that, since anything was last done to it or, for a dependency folder,
/// to what it is worked on with. Blocks for the disk.
std::vector<DeepScanItem> untouched(const Search &search, std::vector<DeepScanItem> items, std::int64_t days);

} // namespace swabby
