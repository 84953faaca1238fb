#pragma once

#include "cleanup/DuplicateGroup.h"
#include "cleanup/ExcludeList.h"
#include "cleanup/RemovableItem.h"
#include "platform/Machine.h"
#include "platform/ScanControl.h"

#include <QtCore/QStringList>

#include <cstdint>
#include <vector>

namespace swabby {

/// The paths the person never wants removed, as stored now.
ExcludeList excludeListFrom(SettingsStore &store);

/// Downloads, then Desktop.
std::vector<std::filesystem::path> duplicateFolders(const Machine &machine);

/// What a storage reminder adds up: the known caches and what duplicates waste. Blocks for as long as it
/// looks.
std::int64_t reclaimableStorage(const Machine &machine, const ScanControl &control);

/// Everything that every engine offers, in the order of the engines. Blocks for as long as it looks.
std::vector<RemovableItem> allRemovableItems(const Machine &machine, const ScanControl &control);
/// What those engines offer that can have found things with these ids; others are not asked. Blocks.
std::vector<RemovableItem> itemsNamed(const QStringList &ids, const Machine &machine,
                                      const ScanControl &control);

} // namespace swabby
