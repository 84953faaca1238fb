#pragma once

#include "cleanup/RemovableItem.h"

#include <vector>

/// Several findings may be about the same files: a folder that holds another one, a copy that is old as well.
namespace swabby {

/// What the items free together: what lies in another one, or is in several, counts once.
std::int64_t bytesTogether(const std::vector<RemovableItem> &items);

/// What is left to remove of the items once the others are gone: those with the same id go, copies and sizes
/// of the rest shrink by what went with the others, and what has nothing left goes too.
std::vector<RemovableItem> withoutGone(const std::vector<RemovableItem> &items,
                                       const std::vector<RemovableItem> &gone);

} // namespace swabby
