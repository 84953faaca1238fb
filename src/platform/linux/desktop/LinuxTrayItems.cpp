#include "platform/linux/desktop/EmbeddedTrayItem.h"
#include "platform/linux/desktop/StatusNotifierItem.h"

#include <QtGui/QGuiApplication>

#include <chrono>

namespace swabby {

TrayItems makeTrayItems()
{
    using namespace std::chrono_literals;
    // What is drawn for a test or a picture stays off the desktop.
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        return {};
    TrayItems items;
    items.push_back(
        std::make_unique<StatusNotifierItem>(qgetenv("DBUS_SESSION_BUS_ADDRESS").toStdString(), 3s));
    items.push_back(std::make_unique<EmbeddedTrayItem>());
    return items;
}

} // namespace swabby
