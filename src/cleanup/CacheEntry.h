#pragma once

#include "platform/Disposal.h"

#include <QtCore/QString>

#include <filesystem>
#include <memory>

namespace swabby {

/// A folder of data that is made again when it is missed.
struct CacheEntry {
    std::filesystem::path path;
    QString description;
    std::int64_t sizeBytes = 0; ///< on the disk
    FileIdentity identity{};    ///< what was measured; no part of what the entry says
    // The same of these as of the known cache that it is.
    std::filesystem::path foundIn{};
    bool isBuildTool = false;
    /// Of the Trash, what of it goes; no part of what the entry says either.
    std::shared_ptr<const TrashListing> trash = {};

    bool operator==(const CacheEntry &other) const
    {
        return path == other.path && description == other.description && sizeBytes == other.sizeBytes;
    }
};

} // namespace swabby
