#include "ui/presentation/StartupText.h"

#include "ui/presentation/PlainWords.h"

namespace swabby {
namespace {

QString startupDetail(const LoginItem &item)
{
    const QString scope = scopeText(item.scope);
    if (item.isOrphaned)
        return scope + QStringLiteral(" · its program no longer exists");
    if (item.bootDelaySeconds)
        return scope + QStringLiteral(" · started %1 s after startup").arg(*item.bootDelaySeconds);
    // A classic item always counts as loaded, which says nothing about it.
    if (item.isLoaded && item.scope != LoginItemScope::classicLoginItem)
        return scope + QStringLiteral(" · running");
    return scope;
}

StartupRowText rowFor(const LoginItem &item)
{
    StartupRowText row;
    row.id = item.id();
    // One that says no name goes by its file.
    row.label = oneLine(item.label.trimmed().isEmpty() ? item.plistPath.section(u'/', -1) : item.label);
    row.tile = tileOf(item);
    return row;
}

} // namespace

StartupRowText judgedRowText(const LoginItem &item)
{
    StartupRowText row = rowFor(item);
    row.detail = startupDetail(item);
    if (item.isOrphaned) {
        row.badge = QStringLiteral("Left behind");
        row.badgeTint = Tint::red;
    } else if (!item.isVouchedFor()) {
        row.badge = QStringLiteral("Not part of the system");
    }
    return row;
}

QList<StartupRowText> disabledRowTexts(const QList<LoginItem> &items, const MachineWords &words)
{
    QList<StartupRowText> rows;
    for (const LoginItem &item : items) {
        StartupRowText row = rowFor(item);
        row.menu = startupMenu(item, words);
        row.detail = QStringLiteral("Turned off in Swabby");
        rows.append(row);
    }
    return rows;
}

QList<StartupRowText> startupRowTexts(const QList<LoginItem> &items, bool worthASecondLook,
                                      const MachineWords &words)
{
    QList<StartupRowText> rows;
    for (const LoginItem &item : items) {
        if (item.deservesALook() != worthASecondLook)
            continue;
        StartupRowText row = judgedRowText(item);
        row.menu = startupMenu(item, words);
        row.canDisable = item.canDisableInPlace;
        rows.append(row);
    }
    return rows;
}

QString startupFailureText(StartupChange failed, const QString &label)
{
    // Its job is ended first, and that cannot be taken back.
    return oneLine(label) +
           (failed == StartupChange::turnOff
                ? QStringLiteral(" could not be turned off for good: it may be stopped now, but it will come "
                                 "back at the next login.")
                : QStringLiteral(" could not be turned on again. Nothing was changed."));
}

} // namespace swabby
