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

} // namespace swabby
