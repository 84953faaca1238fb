#pragma once

#include "platform/CleanupPlaces.h"

namespace swabby {

/// Whether the folder is, or holds, what lies among the caches and nobody gets back by itself. Blocks for the
/// disk.
bool isMoreThanACache(const CleanupPlaces &places, const std::filesystem::path &folder);

} // namespace swabby
