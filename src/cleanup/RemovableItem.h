#pragma once

#include "cleanup/CacheEntry.h"
#include "cleanup/DeepScanItem.h"
#include "cleanup/DuplicateGroup.h"
#include "cleanup/InstalledApp.h"
#include "cleanup/SimulatorRuntimeInfo.h"

#include <variant>
#include <vector>

namespace swabby {

/// An application and what goes with it.
struct AppUninstall {
    InstalledApp app;
    std::vector<AppLeftover> leftovers;

    bool operator==(const AppUninstall &) const = default;
};

/// Everything in the build cache.
struct DerivedData {
    bool operator==(const DerivedData &) const = default;
};

/// Everything the container engine can do without.
struct DockerPrune {
    bool operator==(const DockerPrune &) const = default;
};

/// What an item is, with what its removal needs to know.
using RemovableItemKind = std::variant<CacheEntry, DuplicateGroup, SimulatorRuntimeInfo, DeepScanItem,
                                       AppUninstall, DerivedData, DockerPrune>;

/// "cache", "duplicateGroup", "simulatorRuntime", "deepScanItem", "appUninstall", "derivedData" or
/// "dockerPrune".
QString caseName(const RemovableItemKind &kind);

/// Anything that was found to clean, as lists show it and confirmations ask about it.
struct RemovableItem {
    QString id;       ///< the same at every scan; two file names that are no text are still told apart
    QString category; ///< the group it is shown under
    QString title;
    QString subtitle;           ///< what its removal does
    std::int64_t sizeBytes = 0; ///< freed by its removal, as measured when it was found
    RemovableItemKind kind;

    bool operator==(const RemovableItem &) const = default;

    static RemovableItem fromCache(const CacheEntry &entry);
    static RemovableItem fromDuplicate(const DuplicateGroup &group);
    static RemovableItem fromSimulator(const SimulatorRuntimeInfo &runtime);
    static RemovableItem fromDeepScan(const DeepScanItem &item);
    static RemovableItem fromAppUninstall(const InstalledApp &app, const std::vector<AppLeftover> &leftovers);
    static RemovableItem derivedData(std::int64_t sizeBytes);
    static RemovableItem dockerPrune(std::int64_t reclaimableBytes);
};

} // namespace swabby
