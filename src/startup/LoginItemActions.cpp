#include "startup/LoginItemActions.h"

namespace swabby {

bool LoginItemActions::disable(const LoginItem &item, StartupControl &control)
{
    if (!item.canDisableInPlace || item.plistPath.isEmpty())
        return false;
    control.endJob(item.label, item.plistPath);
    return control.setAside(item.plistPath);
}

bool LoginItemActions::enable(const LoginItem &item, StartupControl &control)
{
    if (item.plistPath.isEmpty() || !control.putBack(item.plistPath))
        return false;
    control.beginJob(item.plistPath);
    return true;
}

} // namespace swabby
