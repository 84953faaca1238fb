#include "startup/LoginItem.h"

namespace swabby {

QString scopeText(LoginItemScope scope)
{
    switch (scope) {
    case LoginItemScope::userAgent:
        return QStringLiteral("Runs in the background");
    case LoginItemScope::globalAgent:
        return QStringLiteral("System-wide background helper");
    case LoginItemScope::globalDaemon:
        return QStringLiteral("Starts before you even log in");
    case LoginItemScope::classicLoginItem:
        return QStringLiteral("Opens when you log in");
    }
    return {};
}

QString LoginItem::id() const
{
    return scopeText(scope) + QLatin1Char(':') + label;
}

} // namespace swabby
