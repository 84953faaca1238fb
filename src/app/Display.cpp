#include "app/Display.h"

#include <QtCore/QLibrary>

namespace swabby {

bool hasDisplay()
{
#ifdef Q_OS_LINUX
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        return true;
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return false;
    // A display that is named may still be out of reach; its own library knows.
    QLibrary xcb(QStringLiteral("xcb"), 1);
    const auto connect = reinterpret_cast<void *(*)(const char *, int *)>(xcb.resolve("xcb_connect"));
    const auto hasError = reinterpret_cast<int (*)(void *)>(xcb.resolve("xcb_connection_has_error"));
    const auto disconnect = reinterpret_cast<void (*)(void *)>(xcb.resolve("xcb_disconnect"));
    if (connect == nullptr || hasError == nullptr || disconnect == nullptr)
        return true;
    void *connection = connect(nullptr, nullptr);
    const bool answers = hasError(connection) == 0;
    disconnect(connection);
    return answers;
#else
    return true;
#endif
}

} // namespace swabby
