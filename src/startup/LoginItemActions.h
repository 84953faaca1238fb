#pragma once

#include "platform/StartupControl.h"
#include "startup/LoginItem.h"

namespace swabby::LoginItemActions {

/// Turns one of the user's own startup items off: ends it for this session and sets its definition aside,
/// where enable() finds it. False, and nothing is touched, for an item that only the system's settings can
/// change; false also when the definition could not be set aside. Blocks: background work, or a terminal.
bool disable(const LoginItem &item, StartupControl &control);

/// Turns an item of LoginItemScanner::disabledItems() on again. False when its definition could not be put
/// back, e.g. because there is another one by now. Blocks.
bool enable(const LoginItem &item, StartupControl &control);

} // namespace swabby::LoginItemActions
