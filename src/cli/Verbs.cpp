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
    Verb{"snapshot", "shows how the machine is now", 0, 0, runSnapshot},
    Verb{"watch [--refreshes N] [--interval SECONDS] [--snooze SECONDS]",
         "prints one line a refresh, until it is stopped", 0, 0, runWatch},
    Verb{"history", "lists the stored points of the last 24 hours", 0, 0, runHistory},
    Verb{
        "startup [disable ID | enable ID | reveal ID | disabled]",
        "lists what starts by itself and what was turned off; turns an item off, on again, or shows its file",
        0, 2, runStartup},
    Verb{"ask QUESTION", "asks the assistant a question about the machine", 1, 1, runAsk},
    Verb{"explain --pid PID | --item ID",
         "asks the assistant what a program or a startup item is and whether it is safe to do without", 0, 0,
         runExplain},
    Verb{"key set | key delete | key status",
         "stores, deletes or tells of the assistant's key, which the desktop's password store keeps", 1, 1,
         runKey},
    Verb{"caches [--unknown | --vet]",
         "lists caches worth clearing; unfamiliar ones; those, looked over by the assistant", 0, 0,
         runCaches},
    Verb{"duplicates [DIR...]", "finds exact copies", 0, anyNumber, runDuplicates},
    Verb{"deep-scan", "finds forgotten large files", 0, 0, runDeepScan},
    Verb{"apps [BUNDLEID]", "lists applications, or what one leaves behind", 0, 1, runApps},
    Verb{"developer", "lists developers' leftovers", 0, 0, runDeveloper},
    Verb{"items", "lists everything that can be removed, with its ids", 0, 0, runItems},
    Verb{"remove ID... [--yes]", "removes after it has named what happens to which path and asked", 1,
         anyNumber, runRemove},
    Verb{"put-back", "takes what went to the Trash back out", 0, 0, runPutBack},
    Verb{"quit PID [--force] [--yes]", "ends a program after asking", 1, 1, runQuit},
    Verb{"check", "does the full check", 0, 0, runCheck},
    Verb{"settings [KEY [VALUE | --unset]]", "shows all preferences or one; stores or removes one", 0, 2,
         runSettings},
    Verb{"pin NAME", "marks a program as known, so that it never raises an issue; again to unmark it", 1, 1,
         runPin},
    Verb{"record DIR [--with-names]",
         "writes a machine folder as data, for somebody who is to see what you see; without --with-names it "
         "names neither your files nor programs outside the system's own folders",
         1, 1, runRecord},
    Verb{"context", "shows the machine in a few plain lines, as the assistant is told", 0, 0, runSnapshot},
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
