#pragma once

#include "cleanup/ExcludeList.h"
#include "cleanup/RemovableItem.h"
#include "platform/Disposal.h"
#include "platform/Machine.h"

#include <vector>

namespace swabby {

/// What became of the items of a run.
struct RemovalOutcome {
    std::vector<TrashedItem> trashed; ///< what lies in the Trash now
    std::vector<RemovableItem> left;  ///< items of which something stayed
    QString problem;                  ///< why nothing was removed at all; else empty
    /// False when something stayed only because where it was could not be written down.
    bool isRecordable = true;
};

/// Removes the items kind by kind, in the product's order, whatever fails on the way, and keeps a record of
/// what goes to the Trash before it goes, in place of that of the removal before. Ends after the item at hand
/// when stopped. Blocks for the disk and for tools: background work only.
RemovalOutcome removeItems(const std::vector<RemovableItem> &items, const ExcludeList &excludes,
                           Machine &machine, const StopToken &stop);

/// The sum of what the items free, as it was shown.
std::int64_t totalBytes(const std::vector<RemovableItem> &items);

} // namespace swabby
