#pragma once

#include "platform/StopToken.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <optional>

namespace swabby {

/// How far a look at everything in a folder goes.
struct TouchLimits {
    std::int64_t latestNanoseconds = std::numeric_limits<std::int64_t>::max(); ///< anything later ends it
    std::size_t mostEntries = 1'000'000;
};

/// The last that was done to what lies at the path, links not followed, and to everything in a folder: when
/// it was modified or made, whichever came later, in nanoseconds since 1970. No value when that is later than
/// the limit, nor when nobody can tell: there are more entries, one of them cannot be looked at or lies on
/// another mount, or the token stopped. Blocks for the disk.
std::optional<std::int64_t> lastTouch(const std::filesystem::path &path, const TouchLimits &limits,
                                      const StopToken &stop);

} // namespace swabby
