#pragma once

#include "cleanup/ExcludeList.h"
#include "cleanup/RemovableItem.h"
#include "platform/Machine.h"
#include "platform/ScanControl.h"

#include <QtCore/QStringList>

#include <optional>
#include <vector>

namespace swabby {

/// What the person never wants removed, as stored now: everything, when that cannot be told.
ExcludeList excludeListFrom(const Machine &machine);

/// What an engine looks with, for as long as the machine is there.
struct Search {
    const Machine &machine;
    ScanControl control;
    ExcludeList excludes; ///< what has to stay

    /// Where every search begins: with what has to stay as stored now.
    static Search on(const Machine &machine, const ScanControl &control);
    /// Why nothing is searched, in words that leave out the full stop; empty when it is.
    const QString &problem() const { return excludes.problem(); }
};

// Each blocks for as long as it looks, and finds nothing when nothing is searched.

/// What one engine offers.
std::vector<RemovableItem> find(CleanupEngine engine, const Search &search);
/// What every engine offers, in their order; they look side by side.
std::vector<RemovableItem> findEverything(const Search &search);
/// What those engines offer that can have found things with these ids; others are not asked.
std::vector<RemovableItem> findNamed(const QStringList &ids, const Search &search);

/// What a storage reminder adds up: the known caches and what duplicates waste. No value when nothing is
/// searched.
std::optional<std::int64_t> reclaimableStorage(const Machine &machine, const ScanControl &control);

} // namespace swabby
