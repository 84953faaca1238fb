#include "cli/Verbs.h"

#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/StateText.h"
#include "engine/TimeText.h"
#include "health/HistoryStore.h"

#include <map>

namespace swabby {
namespace {

int runHistory(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    const History history = HistoryStore::load(machine->places.applicationData, machine->clock->now());
    if (arguments.json) {
        print(jsonText(toJson(history)) + '\n');
        return done;
    }
    std::vector<QStringList> rows = {
        {QStringLiteral("TIME"), QStringLiteral("CPU"), QStringLiteral("MEMORY")}};
    for (const HistoryPoint &point : history)
        rows.push_back({dayAndTime(QDateTime::fromSecsSinceEpoch(static_cast<qint64>(point.date)), QLocale()),
                        QString::number(point.cpu, 'f', 1) + QLatin1Char('%'),
                        QString::number(point.mem, 'f', 1) + QLatin1Char('%')});
    print(table(rows, {1, 2}));
    return done;
}

int runPin(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    AppState state(machine, Record::nothing);
    state.togglePin(arguments.operands.first());
    if (arguments.json) {
        print(jsonText(QJsonObject{{QStringLiteral("pinnedNames"), pinnedNamesJson(state)}}) + '\n');
        return done;
    }
    QString text = QStringLiteral("Pinned:\n");
    for (const QString &name : state.pinnedNames())
        text += QStringLiteral("  ") + harmless(name) + QLatin1Char('\n');
    print(state.pinnedNames().empty() ? QStringLiteral("Nothing is pinned.\n") : text);
    return done;
}

} // namespace

int runVerb(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    using Run = int (*)(const Arguments &, const std::shared_ptr<Machine> &);
    static const std::map<QString, Run> verbs = {
        {QStringLiteral("snapshot"), runSnapshot}, {QStringLiteral("context"), runSnapshot},
        {QStringLiteral("watch"), runWatch},       {QStringLiteral("history"), runHistory},
        {QStringLiteral("startup"), runStartup},   {QStringLiteral("settings"), runSettings},
        {QStringLiteral("pin"), runPin},           {QStringLiteral("ask"), runAsk},
        {QStringLiteral("explain"), runExplain},   {QStringLiteral("key"), runKey},
        {QStringLiteral("caches"), runCaches},     {QStringLiteral("duplicates"), runScan},
        {QStringLiteral("deep-scan"), runScan},    {QStringLiteral("apps"), runScan},
        {QStringLiteral("developer"), runScan},    {QStringLiteral("items"), runScan},
        {QStringLiteral("remove"), runRemove},     {QStringLiteral("put-back"), runPutBack},
        {QStringLiteral("quit"), runQuit},         {QStringLiteral("check"), runCheck},
    };
    return verbs.at(arguments.verb)(arguments, machine);
}

} // namespace swabby
