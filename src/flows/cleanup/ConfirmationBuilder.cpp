#include "flows/cleanup/ConfirmationBuilder.h"

#include "cleanup/RemovalRun.h"
#include "engine/ByteCount.h"
#include "engine/ProgramFigures.h"
#include "engine/WholeNumber.h"

#include <memory>

namespace swabby {
namespace {

/// What comes of it, where a person may lose by it too.
QString quitEffect(const QuitPlan &plan)
{
    if (plan.means == Quitting::Means::question)
        return QStringLiteral("Quits cleanly just like closing it normally.");
    return (plan.isAnew ? QStringLiteral("It was asked to quit and is still running. Now it")
                        : QStringLiteral("It")) +
           QStringLiteral(" is told to end right away: what you haven't saved in it may be lost.");
}

QString quitMessage(const ProcessSample &process, const QuitPlan &plan, const MachineWords &words)
{
    return QStringLiteral("Currently ") + powerText(process.cpuPercent, words) +
           (coresText(process.cpuPercent, words) ? QStringLiteral(" and using ") : QStringLiteral(" and ")) +
           percentText(process.memPercent) + QStringLiteral(" memory. ") + quitEffect(plan);
}

QString endOfSessionWarning(const QString &name)
{
    return name + QStringLiteral(" keeps your session running. Quitting it ends the session: everything that "
                                 "is open closes, and unsaved work is lost.");
}

} // namespace

ConfirmationInfo ConfirmationBuilder::quit(const ProcessSample &process, const QuitPlan &plan, QuitFlow &flow,
                                           const QString &shownName)
{
    const QString name = shownName.isEmpty() ? process.name : shownName;
    const bool isForced = plan.means == Quitting::Means::kill;
    ConfirmationInfo info;
    info.title =
        (isForced ? QStringLiteral("Force quit ") : QStringLiteral("Quit ")) + name + QLatin1Char('?');
    info.message = process.holdsSession ? endOfSessionWarning(name)
                   : isForced           ? forceQuitWarning()
                                        : quitMessage(process, plan, flow.words());
    if (isForced && !process.holdsSession && !flow.asksAll())
        info.message += QStringLiteral(" What you haven't saved in it may be lost.");
    info.confirmLabel = isForced ? QStringLiteral("Force Quit") : QStringLiteral("Quit");
    info.trustRatio = process.trustRatio();
    info.recommendation = recommendation(process);
    info.onConfirm = [process, plan, &flow] { flow.quit(process, plan); };
    return info;
}

ConfirmationInfo ConfirmationBuilder::remove(const std::vector<RemovableItem> &items, CleanupFlow &flow,
                                             const std::function<void()> &onRemoved)
{
    const QString frees =
        QStringLiteral("Frees up ") + fileByteCount(totalBytes(items)) + QStringLiteral(". ");
    ConfirmationInfo info;
    if (items.size() == 1) {
        info.title = QStringLiteral("Remove ") + items.front().title + QLatin1Char('?');
        info.message = frees + items.front().subtitle + QLatin1Char('.');
        info.confirmLabel = QStringLiteral("Remove");
    } else {
        info.title = QStringLiteral("Remove ") + QString::number(items.size()) + QStringLiteral(" items?");
        info.message =
            frees + QStringLiteral("Anything removable goes to Trash, not deleted outright — caches and "
                                   "build artifacts regenerate automatically.");
        info.confirmLabel = QStringLiteral("Remove All");
    }
    if (const QString lost = goneForGood(items); !lost.isEmpty())
        info.warning = lost + QStringLiteral(". This cannot be undone.");
    // However often the question is handed on, they may be thousands.
    info.onConfirm = [items = std::make_shared<const std::vector<RemovableItem>>(items), &flow, onRemoved] {
        flow.remove(*items);
        if (onRemoved)
            onRemoved();
    };
    return info;
}

QString ConfirmationBuilder::goneForGood(std::span<const RemovableItem> items)
{
    std::size_t count = 0;
    for (const RemovableItem &item : items)
        if (const auto *entry = std::get_if<CacheEntry>(&item.kind); entry && entry->trash)
            count += entry->trash->items.size();
    if (count == 0)
        return {};
    return QStringLiteral("Gone for good: %1 thing%2 in the Trash")
        .arg(QString::number(count), count == 1 ? QString() : QStringLiteral("s"));
}

QString ConfirmationBuilder::forceQuitWarning()
{
    return QStringLiteral(
        "This shuts it down immediately without saving state. Use only if a normal quit didn't work.");
}

std::optional<ProcessSample> ConfirmationBuilder::findProcess(const QString &name, const AppState &state)
{
    const QString wanted = name.toLower();
    // Every name contains an empty one.
    if (wanted.trimmed().isEmpty())
        return std::nullopt;
    const QList<ProcessSample> candidates = state.processes() + state.batteryDrainers();
    for (const ProcessSample &process : candidates)
        if (process.name.toLower() == wanted)
            return process;
    for (const ProcessSample &process : candidates) {
        const QString known = process.name.toLower();
        if (!known.isEmpty() && (known.contains(wanted) || wanted.contains(known)))
            return process;
    }
    return std::nullopt;
}

} // namespace swabby
