#include "cleanup/AppUninstaller.h"
#include "cleanup/PutBackRecord.h"
#include "cleanup/RemovalRun.h"
#include "cleanup/Search.h"
#include "cli/Background.h"
#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/Verbs.h"
#include "flows/cleanup/CleanupFlow.h"
#include "flows/cleanup/ConfirmationBuilder.h"

#include <algorithm>
#include <iterator>

namespace swabby {
namespace {

/// The item of that id, as it is or as lists show it; null when none has it, and when several are shown
/// alike.
const RemovableItem *itemOf(const QString &id, const std::vector<RemovableItem> &all)
{
    const auto item = std::ranges::find(all, id, &RemovableItem::id);
    if (item != all.end())
        return &*item;
    const auto isShownSo = [&](const RemovableItem &known) { return harmless(known.id) == id; };
    const auto shown = std::ranges::find_if(all, isShownSo);
    return shown != all.end() && std::ranges::count_if(all, isShownSo) == 1 ? &*shown : nullptr;
}

/// The items of these ids, each once, in the order asked for.
std::vector<RemovableItem> itemsOf(const QStringList &ids, const std::vector<RemovableItem> &all)
{
    std::vector<RemovableItem> items;
    for (const QString &id : ids)
        if (const RemovableItem *item = itemOf(id, all);
            item != nullptr && std::ranges::count(items, item->id, &RemovableItem::id) == 0)
            items.push_back(*item);
    return items;
}

/// Those that stand for nothing, or for several things.
QStringList unknownAmong(const QStringList &ids, const std::vector<RemovableItem> &all)
{
    QStringList unknown;
    std::ranges::copy_if(ids, std::back_inserter(unknown),
                         [&](const QString &id) { return itemOf(id, all) == nullptr; });
    return unknown;
}

/// The applications among the items that have to be quit first. Blocks for the list of what runs.
QStringList runningAmong(const std::vector<RemovableItem> &items, const Machine &machine)
{
    QStringList names;
    for (const RemovableItem &item : items)
        if (const auto *uninstall = std::get_if<AppUninstall>(&item.kind);
            uninstall != nullptr && AppUninstaller::isRunning(machine, uninstall->app.bundleID))
            names.append(uninstall->app.name);
    return names;
}

/// What becomes of which path, a line each: as many as leave the question on the screen, the others counted.
QString effectsText(const std::vector<RemovableItem> &items)
{
    constexpr std::size_t mostLines = 20;
    std::vector<QStringList> rows;
    std::size_t count = 0;
    for (const RemovableItem &item : items)
        for (const RemovalEffect &effect : removalEffects(item.kind))
            if (++count <= mostLines)
                rows.push_back({harmless(effect.fate),
                                effect.path.empty() ? harmless(effect.name) : pathText(effect.path)});
    return table(rows) +
           (count > mostLines ? QStringLiteral("  and %1 more\n").arg(count - mostLines) : QString());
}

/// What came of the question; report is absent when it was not agreed to.
void printRun(const Arguments &arguments, const ConfirmationInfo &info,
              const std::vector<RemovableItem> &items, const std::optional<CleanupReport> &report)
{
    if (arguments.json)
        print(jsonText(QJsonObject{
                  {QStringLiteral("title"), info.title},
                  {QStringLiteral("message"), info.message},
                  {QStringLiteral("confirmLabel"), info.confirmLabel},
                  {QStringLiteral("confirmed"), report.has_value()},
                  {QStringLiteral("itemCount"), static_cast<qint64>(items.size())},
                  {QStringLiteral("freedBytes"), static_cast<qint64>(totalBytes(items))},
                  {QStringLiteral("banner"), report ? QJsonValue(bannerText(*report)) : QJsonValue()},
                  {QStringLiteral("left"), report ? static_cast<qint64>(report->left.size()) : 0}}) +
              '\n');
    else if (report)
        print(bannerText(*report) + QLatin1Char('\n') +
              (report->left.empty() ? QString() : leftText(*report) + QLatin1Char('\n')) +
              (report->canBePutBack > 0
                   ? QStringLiteral("\"swabbyctl put-back\" takes what is in the Trash back out.\n")
                   : QString()));
    else
        print(QStringLiteral("Nothing was removed.\n"));
    QCoreApplication::exit(report ? done : notDone);
}

/// What the ids stand for.
struct Chosen {
    std::vector<RemovableItem> items;
    QStringList running; ///< what of it has to be quit first
    QStringList unknown; ///< ids that stand for nothing
};

void askAndRemove(const Arguments &arguments, const Chosen &chosen, CleanupFlow &flow)
{
    const std::vector<RemovableItem> &items = chosen.items;
    const ConfirmationInfo info = ConfirmationBuilder::remove(items, flow);
    for (const QString &name : chosen.running)
        printProblem(QStringLiteral("swabbyctl: %1 is running: quit it first").arg(name));
    for (const QString &id : chosen.unknown)
        printProblem(
            QStringLiteral("swabbyctl: nothing to remove has the id \"%1\"; swabbyctl items lists the ids")
                .arg(id));
    if (!chosen.unknown.isEmpty() || !chosen.running.isEmpty() ||
        !isAgreed(arguments, info, effectsText(items))) {
        printRun(arguments, info, items, std::nullopt);
        return;
    }
    QObject::connect(&flow, &CleanupFlow::removed, &flow, [=](const CleanupReport &report) {
        const bool isRefused = !report.problem.isEmpty();
        if (isRefused)
            printProblem(QStringLiteral("swabbyctl: ") + report.problem);
        printRun(arguments, info, items, isRefused ? std::nullopt : std::optional(report));
    });
    info.onConfirm();
}

} // namespace

int runRemove(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    AppState state(machine, Record::nothing);
    CleanupFlow flow(state);
    const auto choose = [&](const Search &search) {
        const auto all = findNamed(arguments.operands, search);
        const auto items = itemsOf(arguments.operands, all);
        return Chosen{items, runningAmong(items, *machine), unknownAmong(arguments.operands, all)};
    };
    return searchInBackground(*machine, choose,
                              [&](const Chosen &chosen) { askAndRemove(arguments, chosen, flow); });
}

int runPutBack(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    const auto putBack = [&] {
        return PutBackRecord(machine->places.applicationData).putBackAll(*machine->disposal);
    };
    return runInBackground(*machine, putBack, [&](const PutBackResult &result) {
        if (arguments.json)
            print(jsonText(QJsonObject{{QStringLiteral("restored"), result.restored},
                                       {QStringLiteral("left"), result.left}}) +
                  '\n');
        else if (result == PutBackResult())
            print(QStringLiteral("There is nothing to put back.\n"));
        else
            print(QStringLiteral("Put back: %1. Still in the Trash: %2.\n")
                      .arg(result.restored)
                      .arg(result.left));
        QCoreApplication::exit(result.restored == 0 ? notDone : done);
    });
}

} // namespace swabby
