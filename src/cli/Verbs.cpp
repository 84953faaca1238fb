#include "cli/Verbs.h"

#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/StateText.h"
#include "engine/TimeText.h"
#include "health/HistoryStore.h"
#include "settings/Settings.h"

#include <array>
#include <limits>
#include <string>

namespace swabby {

namespace {

constexpr int anyNumber = std::numeric_limits<int>::max();

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
    Settings settings(*machine->settings);
    const auto stored = [&settings] {
        const QStringList names = settings.value(setting<"pinnedProcessNames">);
        return std::set<QString>(names.begin(), names.end());
    };
    const QString &toggled = arguments.operands.first();
    const bool isStored = settings.setPinned(toggled, !stored().contains(toggled));
    const std::set<QString> names = stored();
    QString text = names.empty() ? QStringLiteral("Nothing is pinned.\n") : QStringLiteral("Pinned:\n");
    for (const QString &name : names)
        text += QStringLiteral("  ") + harmless(name) + QLatin1Char('\n');
    print(arguments.json ? jsonText(QJsonObject{{QStringLiteral("pinnedNames"), toJson(names)}}) + '\n'
                         : text.toUtf8());
    return statusOfWriting(isStored, *machine);
}

constexpr std::array verbTable = {
    Verb{"snapshot", 0, 0, runSnapshot},
    Verb{"watch [--refreshes N] [--interval SECONDS] [--snooze SECONDS]", 0, 0, runWatch},
    Verb{"history", 0, 0, runHistory},
    Verb{"startup [disable ID | enable ID | reveal ID | disabled]", 0, 2, runStartup},
    Verb{"ask QUESTION", 1, 1, runAsk},
    Verb{"explain --pid PID | --item ID", 0, 0, runExplain},
    Verb{"key set | key delete | key status", 1, 1, runKey},
    Verb{"caches [--unknown | --vet]", 0, 0, runCaches},
    Verb{"duplicates [DIR...]", 0, anyNumber, runDuplicates},
    Verb{"deep-scan", 0, 0, runDeepScan},
    Verb{"apps [BUNDLEID]", 0, 1, runApps},
    Verb{"developer", 0, 0, runDeveloper},
    Verb{"items", 0, 0, runItems},
    Verb{"remove ID... [--yes]", 1, anyNumber, runRemove},
    Verb{"put-back", 0, 0, runPutBack},
    Verb{"quit PID [--force] [--yes]", 1, 1, runQuit},
    Verb{"check", 0, 0, runCheck},
    Verb{"settings [KEY [VALUE | --unset]]", 0, 2, runSettings},
    Verb{"pin NAME", 1, 1, runPin},
    Verb{"context", 0, 0, runSnapshot},
};

} // namespace

QString Verb::name() const
{
    return QString::fromLatin1(usage).section(QLatin1Char(' '), 0, 0);
}

bool Verb::knows(const char *option) const
{
    const std::string_view name = option;
    return name == "machine" || name == "run-tools" || name == "json" ||
           std::string_view(usage).find("--" + std::string(name)) != std::string_view::npos;
}

int statusOfWriting(bool isWritten, const Machine &machine)
{
    const QString problem = isWritten ? QString() : Settings(*machine.settings).problem();
    if (!isWritten)
        printProblem(QStringLiteral("swabbyctl: ") +
                     (problem.isEmpty() ? QStringLiteral("the settings could not be written") : problem));
    return isWritten ? done : notDone;
}

void printSettingsProblem(const Machine &machine)
{
    const QString problem = Settings(*machine.settings).neverRemove(machine.places.home).problem;
    if (!problem.isEmpty())
        printProblem(QStringLiteral("swabbyctl: ") + problem);
}

bool storesOrRemoves(const Arguments &arguments)
{
    const QString verb = arguments.row->name();
    const QString what = arguments.operands.value(0);
    if (verb == QLatin1String("settings"))
        return arguments.unset || arguments.operands.size() > 1;
    if (verb == QLatin1String("startup"))
        return what == QLatin1String("disable") || what == QLatin1String("enable");
    if (verb == QLatin1String("key"))
        return what != QLatin1String("status");
    return QStringList{QStringLiteral("watch"), QStringLiteral("remove"), QStringLiteral("put-back"),
                       QStringLiteral("pin")}
        .contains(verb);
}

std::span<const Verb> verbs()
{
    return verbTable;
}

} // namespace swabby
