#pragma once

#include "platform/desktop/DesktopRequests.h"

@class NSMenu;

namespace swabby {

/// The program's menus. The requests have to outlive them.
NSMenu *makeApplicationMenus(const DesktopRequests &requests);

} // namespace swabby
