#include "app/tray/TrayItem.h"

namespace swabby {

TrayItems makeTrayItems()
{
    return {};
}

} // namespace swabby
