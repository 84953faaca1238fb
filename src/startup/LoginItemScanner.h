#pragma once

#include "platform/BootClock.h"
#include "platform/StartupControl.h"
#include "startup/LoginItem.h"

namespace swabby::LoginItemScanner {

/// Everything that starts by itself: first what has lost its program or does not come from the system's
/// vendor, then the rest, each by label. Nothing is kept between calls. Blocks: background work only.
QList<LoginItem> scan(StartupSource &source, BootClock &boot);

/// What LoginItemActions::disable() turned off, or somebody else in the same way; plistPath is where the
/// definition was. Blocks.
QList<LoginItem> disabledItems(StartupControl &control);

} // namespace swabby::LoginItemScanner
