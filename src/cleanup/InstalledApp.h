#pragma once

#include "platform/FileIdentity.h"

#include <QtCore/QString>

#include <filesystem>

namespace swabby {

/// An application the user can do without.
struct InstalledApp {
    std::filesystem::path path;
    QString name;
    QString bundleID;
    std::int64_t sizeBytes = 0;      ///< on the disk
    std::filesystem::path foundIn{}; ///< the folder of applications it lies in
    FileIdentity identity{};         ///< what was measured; with foundIn no part of what it says

    bool operator==(const InstalledApp &other) const
    {
        return path == other.path && name == other.name && bundleID == other.bundleID &&
               sizeBytes == other.sizeBytes;
    }
};

/// What an application leaves behind in the user's folders.
struct AppLeftover {
    std::filesystem::path path;
    QString description;
    std::int64_t sizeBytes = 0;      ///< on the disk
    std::filesystem::path foundIn{}; ///< the folder where every application has such a thing
    FileIdentity identity{};         ///< what was measured; with foundIn no part of what it says

    bool operator==(const AppLeftover &other) const
    {
        return path == other.path && description == other.description && sizeBytes == other.sizeBytes;
    }
};

} // namespace swabby
