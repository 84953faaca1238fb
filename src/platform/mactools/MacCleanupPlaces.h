#pragma once

#include "platform/CleanupPlaces.h"

namespace swabby {

/// Where a Mac keeps what piles up.
CleanupPlaces macCleanupPlaces(const std::filesystem::path &home, const std::filesystem::path &root);

} // namespace swabby
