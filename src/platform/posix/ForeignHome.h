#pragma once

#include "platform/Places.h"

namespace swabby {

/// Why this user must not store or remove anything in those places, in one line: root, whose files and
/// removals their owner could not undo. Empty otherwise.
QString foreignHome(const Places &places);

} // namespace swabby
