#include "startup/LoginAtLogin.h"

#include <QtCore/QDebug>

namespace swabby {

void LoginAtLogin::setEnabled(bool enabled, LoginService &service)
{
    if (enabled && service.isEnabled())
        return;
    const QString problem = enabled ? service.registerAtLogin() : service.unregister();
    if (!problem.isEmpty())
        qWarning("LoginAtLogin error: %s", qPrintable(problem));
}

} // namespace swabby
