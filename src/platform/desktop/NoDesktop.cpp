#include "platform/desktop/DesktopAppearance.h"
#include "platform/desktop/Display.h"
#include "platform/desktop/TrayItem.h"

namespace swabby {

bool hasDisplay()
{
    return true;
}

bool placesWindows()
{
    return true;
}

void comeToFront() {}

bool blendsWindows()
{
    return true;
}

bool wantsNameInTitles()
{
    return false;
}

std::unique_ptr<DesktopAppearance> makeDesktopAppearance()
{
    return std::make_unique<DesktopAppearance>();
}

TrayItems makeTrayItems()
{
    return {};
}

} // namespace swabby
