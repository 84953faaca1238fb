#pragma once

#include "ai/CloudAI.h"
#include "cleanup/RemovableItem.h"
#include "platform/ScanControl.h"

#include <QCoroTask>

#include <vector>

namespace swabby {

/// A cache folder that no table knows, and what the assistant thinks of it.
struct SuggestedCache {
    RemovableItem item;
    bool looksSafe = false; ///< false also when nobody could be asked
    QString reason;

    bool operator==(const SuggestedCache &) const = default;
};

/// What the assistant thinks of some caches, in their order.
struct VettedCaches {
    std::vector<SuggestedCache> suggestions;
    bool wasSent = false; ///< names and sizes left this computer for it
    QString host = {};    ///< to where, when the person chose that address; else empty
    std::optional<ModelFailure> failure = std::nullopt; ///< why not all were answered; none when all were
};

/// Asks about each of these, one after the other, and tells which one it asks about. After a stop nobody is
/// asked any more, and what there is until then comes back.
QCoro::Task<VettedCaches> vetCaches(CloudAI &ai, std::vector<RemovableItem> caches, ScanControl control);

} // namespace swabby
