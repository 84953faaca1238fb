#pragma once

#include "platform/BootClock.h"
#include "startup/LoginItem.h"

namespace swabby::LoginItemScanner {

/// Everything that starts by itself: first what has lost its program or does not come from the system's
/// vendor, then the rest, each by label. Nothing is kept between calls. Blocks: background work only.
QList<LoginItem> scan(StartupSource &source, BootClock &boot);

} // namespace swabby::LoginItemScanner
