#include "startup/LoginItemScanner.h"

#include "engine/Probes.h"

#include <algorithm>

namespace swabby {
namespace {

LoginItem itemOf(const StartupEntry &entry, BootClock &boot)
{
    return {.label = entry.label,
            .plistPath = entry.definitionPath,
            .programPath = entry.programPath,
            .scope = entry.scope,
            .isLoaded = entry.isLoaded,
            .isOrphaned = entry.programIsMissing,
            .isAppleSigned = entry.isVendorSigned,
            // Only what lies in the user's own folders can be changed without administrator rights.
            .canDisableInPlace = entry.scope == LoginItemScope::userAgent || entry.canBeOverridden,
            .bootDelaySeconds = entry.pid ? BootTime::delaySeconds(boot, *entry.pid) : std::nullopt,
            .isOwn = entry.isOwn,
            .icon = entry.icon};
}

// By code point: UTF-16 order, which QString compares by, puts characters beyond U+FFFF too early.
bool precedes(const QString &left, const QString &right)
{
    return left.toUtf8() < right.toUtf8();
}

} // namespace

QList<LoginItem> LoginItemScanner::scan(StartupSource &source, BootClock &boot)
{
    QList<LoginItem> items;
    for (const StartupEntry &entry : source.entries())
        items.append(itemOf(entry, boot));
    std::stable_sort(items.begin(), items.end(), [](const LoginItem &a, const LoginItem &b) {
        if (a.deservesALook() != b.deservesALook())
            return a.deservesALook();
        return precedes(a.label, b.label);
    });
    return items;
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
        item.icon = entry.icon;
        items.append(item);
    }
    std::stable_sort(items.begin(), items.end(),
                     [](const LoginItem &a, const LoginItem &b) { return a.label < b.label; });
    return items;
}

} // namespace swabby
