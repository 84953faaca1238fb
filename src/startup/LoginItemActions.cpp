#include "startup/LoginItemActions.h"

namespace swabby {

bool LoginItemScanner::disable(const LoginItem &item, StartupControl &control)
{
    if (!item.canDisableInPlace || item.plistPath.isEmpty())
        return false;
    control.endJob(item.label, item.plistPath);
    return control.setAside(item.plistPath);
}

QList<LoginItem> LoginItemScanner::disabledItems(StartupControl &control)
{
    QList<LoginItem> items;
    for (const StartupEntry &entry : control.setAsideEntries()) {
        LoginItem item;
        item.label = entry.label;
        item.plistPath = entry.definitionPath;
        item.programPath = entry.programPath;
        item.scope = entry.scope;
        item.isOrphaned = entry.programIsMissing;
        items.append(item);
    }
    std::stable_sort(items.begin(), items.end(),
                     [](const LoginItem &a, const LoginItem &b) { return a.label < b.label; });
    return items;
}

bool LoginItemScanner::enable(const LoginItem &item, StartupControl &control)
{
    if (item.plistPath.isEmpty() || !control.putBack(item.plistPath))
        return false;
    control.beginJob(item.plistPath);
    return true;
}

} // namespace swabby
