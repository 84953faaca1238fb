#pragma once

#include "cleanup/CacheEntry.h"
#include "cleanup/DeepScanItem.h"
#include "cleanup/DuplicateGroup.h"
#include "cleanup/InstalledApp.h"
#include "cleanup/SimulatorRuntimeInfo.h"

#include <string>
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
    std::int64_t sizeBytes = 0;

    bool operator==(const DerivedData &) const = default;
};

/// Everything the container engine can do without.
struct DockerPrune {
    std::int64_t sizeBytes = 0; ///< as the engine estimates it
    std::string engine{};       ///< the address of the one that was asked

    bool operator==(const DockerPrune &) const = default;
};

/// What an item is, with what its removal needs to know. A removal takes the kinds in this order.
using RemovableItemKind = std::variant<CacheEntry, DuplicateGroup, SimulatorRuntimeInfo, DerivedData,
                                       DockerPrune, DeepScanItem, AppUninstall>;

/// What looks for one kind of clutter each, in the order in which everything they find is listed.
enum class CleanupEngine {
    knownCaches,
    unknownCaches,
    duplicates,
    simulatorRuntimes,
    buildCache,
    docker,
    deepScan,
    applications
};

/// Anything that was found to clean, as lists show it and confirmations ask about it.
struct RemovableItem {
    QString id;       ///< the same at every scan; two file names that are no text are still told apart
    QString category; ///< the group it is shown under
    QString title;
    QString subtitle;           ///< what its removal does
    std::int64_t sizeBytes = 0; ///< freed by its removal, as measured when it was found
    RemovableItemKind kind;

    bool operator==(const RemovableItem &) const = default;

    static RemovableItem of(const RemovableItemKind &found);
};

/// "cache", "duplicateGroup", "simulatorRuntime", "derivedData", "dockerPrune", "deepScanItem" or
/// "appUninstall".
QString caseName(const RemovableItemKind &kind);

/// One of the things behind an item, and what becomes of it.
struct RemovalEffect {
    std::filesystem::path path; ///< empty when it is no file
    QString name;               ///< when it is no file
    QString fate;               ///< "stays", "to the Trash", "deleted"
};

/// Everything that the removal touches, and what it leaves on purpose.
std::vector<RemovalEffect> removalEffects(const RemovableItemKind &kind);

} // namespace swabby
