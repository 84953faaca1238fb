#pragma once

#include "platform/posix/Descriptor.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

namespace swabby {

/// A file or folder by its disk and its number there.
using Thing = std::pair<std::uint64_t, std::uint64_t>;

/// What lies on the way to an absolute path, as far as it is there. Links are not followed.
struct PathWay {
    std::vector<Thing> above; ///< from the top down, without the root folder
    std::optional<Thing> itself;
    bool hasLink = false; ///< among those above

    /// Looks at each part once; opens nothing.
    static PathWay to(const std::filesystem::path &path);
};

/// Holds what is at the path without opening it, a link as such: some disks give a file another number each
/// time somebody looks, but for one that is held.
Descriptor holdEntry(const std::filesystem::path &path);

} // namespace swabby
