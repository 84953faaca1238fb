#pragma once

#include "platform/FileIdentity.h"

#include <QtCore/QString>

#include <filesystem>

namespace swabby {

/// A folder of data that is made again when it is missed.
struct CacheEntry {
    std::filesystem::path path;
    QString description;
    std::int64_t sizeBytes = 0; ///< on the disk
    FileIdentity identity{};    ///< what was measured; no part of what the entry says

    bool operator==(const CacheEntry &other) const
    {
        return path == other.path && description == other.description && sizeBytes == other.sizeBytes;
    }
};

/// A cache folder that no table knows, and what the assistant thinks of it.
struct SuggestedCache {
    CacheEntry entry;
    bool looksSafe = false; ///< false also when nobody could be asked
    QString reason;

    bool operator==(const SuggestedCache &) const = default;
};

} // namespace swabby
