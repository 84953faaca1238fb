#pragma once

#include "platform/FileIdentity.h"

#include <QtCore/QString>

#include <filesystem>

namespace swabby {

enum class DeepScanCategory { nodeModules, diskImage, oldDownload };

/// What people read for it: "Old installer file".
QString labelOf(DeepScanCategory category);

/// Something large that its owner has most likely forgotten.
struct DeepScanItem {
    std::filesystem::path path;
    DeepScanCategory category = DeepScanCategory::nodeModules;
    QString description;
    std::int64_t sizeBytes = 0;
    std::int64_t daysOld = 0;        ///< since it, or its project, was last changed
    std::filesystem::path foundIn{}; ///< the folder that was searched
    FileIdentity identity{};         ///< what was measured; with foundIn no part of what it says

    bool operator==(const DeepScanItem &other) const
    {
        return path == other.path && category == other.category && description == other.description &&
               sizeBytes == other.sizeBytes && daysOld == other.daysOld;
    }
};

} // namespace swabby
