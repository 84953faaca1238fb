#pragma once

#include "cleanup/RemovableItem.h"
#include "cleanup/Search.h"

#include <span>
#include <vector>

namespace swabby {

/// How an engine finds what it offers, and what that is called. Its sentences stand beside the table, for
/// they depend on what was found; RemovalRun.cpp knows how it goes.
struct CleanupEngineRow {
    CleanupEngine engine;
    const char *idPrefix; ///< how the ids of its items begin
    const char *category; ///< the group they are shown under
    const char *caseName; ///< of their kind
    /// Blocks for the disk and for tools.
    std::vector<RemovableItem> (*find)(const Search &search);
};

/// One row for each engine, in their order.
std::span<const CleanupEngineRow> cleanupEngines();

/// Downloads, then Desktop: where copies are looked for.
std::vector<std::filesystem::path> duplicateFolders(const Machine &machine);
/// The copies in these folders. Blocks for as long as it reads.
std::vector<DuplicateGroup> duplicatesIn(const std::vector<std::filesystem::path> &folders,
                                         const Search &search);

} // namespace swabby
