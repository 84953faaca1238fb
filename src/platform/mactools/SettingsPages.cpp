#include "platform/mactools/SettingsPages.h"

namespace swabby::SettingsPages {
namespace {

QString page(const char *name)
{
    return QStringLiteral("x-apple.systempreferences:com.apple.") + QLatin1String(name);
}

} // namespace

QString loginItems()
{
    return page("LoginItems-Settings.extension");
}

QString allowing(Permission what)
{
    switch (what) {
    case Permission::fullDiskAccess:
        return page("settings.PrivacySecurity.extension?Privacy_AllFiles");
    case Permission::applicationManagement:
        return page("settings.PrivacySecurity.extension?Privacy_AppBundles");
    case Permission::automation:
        return page("settings.PrivacySecurity.extension?Privacy_Automation");
    case Permission::notifications:
        break;
    }
    return page("Notifications-Settings.extension");
}

} // namespace swabby::SettingsPages
