#include "platform/desktop/Display.h"

#include "platform/linux/desktop/SelectionOwner.h"

#include <QtGui/QGuiApplication>

#include <xcb/xcb.h>

namespace swabby {
namespace {

bool isWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace

bool hasDisplay()
{
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        return true;
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return false;
    // A display that is named may still be out of reach; its own library knows.
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

bool placesWindows()
{
    return !isWayland();
}

bool blendsWindows()
{
    return isWayland() || (QGuiApplication::platformName() == QLatin1String("xcb") &&
                           SelectionOwner("_NET_WM_CM", {}, [] {}).window() != XCB_NONE);
}

// The toolkit adds the name to what it tells the compositor, but not to the frame that it may draw itself.
void comeToFront() {}

bool wantsNameInTitles()
{
    return isWayland();
}

} // namespace swabby
