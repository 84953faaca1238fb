#pragma once

#include "engine/SaturatedBytes.h"
#include "platform/FileIdentity.h"
#include "platform/Utf8.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace swabby {

/// Files with exactly the same contents: the one that is kept, then the others in the order found.
struct DuplicateGroup {
    std::vector<std::filesystem::path> paths;
    std::int64_t sizeBytes = 0; ///< of one copy
    /// What was read at each path. A path without one is never removed.
    std::vector<FileIdentity> identities = {};

    QString name() const { return paths.empty() ? QString() : textOf(paths.front().filename().native()); }
    std::int64_t wastedBytes() const
    {
        return saturatedProduct(sizeBytes, static_cast<std::int64_t>(paths.size()) - 1);
    }

    bool operator==(const DuplicateGroup &other) const
    {
        return paths == other.paths && sizeBytes == other.sizeBytes;
    }
};

} // namespace swabby
