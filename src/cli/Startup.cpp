#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/StateText.h"
#include "cli/Verbs.h"
#include "startup/LoginItemActions.h"
#include "startup/LoginItemScanner.h"

#include <algorithm>

namespace swabby {
namespace {

/// What can be done to one item: its word on the command line, its key in the answer, and what people read.
struct Action {
    const char *word;
    const char *key;
    const char *doneText;
    bool (*act)(const LoginItem &item, Machine &machine);
};

bool reveal(const LoginItem &item, Machine &machine)
{
    return !item.plistPath.isEmpty() && machine.workspace->reveal(item.plistPath);
}

bool disable(const LoginItem &item, Machine &machine)
{
    return LoginItemActions::disable(item, *machine.startupControl);
}

bool enable(const LoginItem &item, Machine &machine)
{
    return LoginItemActions::enable(item, *machine.startupControl);
}

constexpr std::array actions = {
    Action{"disable", "disabled", "Turned off. It stays where it is; \"startup enable\" turns it on again.",
           disable},
    Action{"enable", "enabled", "Turned on again.", enable},
    Action{"reveal", "revealed", "Shown in the file viewer.", reveal},
};

int printItems(const Arguments &arguments, const QList<LoginItem> &items, const QString &none)
{
    if (arguments.json)
        print(jsonText(toJson(items)) + '\n');
    else
        print(items.isEmpty() ? none : loginItemsText(items));
    return done;
}

int change(const Arguments &arguments, const Action &action, Machine &machine)
{
    const bool isOff = action.act == enable;
    const QList<LoginItem> items = isOff ? LoginItemScanner::disabledItems(*machine.startupControl)
                                         : LoginItemScanner::scan(*machine.startup, *machine.boot);
    const auto item = std::find_if(items.begin(), items.end(), [&](const LoginItem &candidate) {
        return candidate.id() == arguments.operands.last();
    });
    const bool isDone = item != items.end() && action.act(*item, machine);
    if (arguments.json)
        print(jsonText(QJsonObject{{QLatin1String(action.key), isDone}}) + '\n');
    else if (isDone)
        print(QLatin1String(action.doneText) + QLatin1Char('\n'));
    else if (item == items.end())
        printProblem(
            QStringLiteral("swabbyctl: no startup item \"%1\"; swabbyctl startup --json lists their ids")
                .arg(arguments.operands.last()));
    else if (action.act == disable && !item->canDisableInPlace)
        printProblem(QStringLiteral("swabbyctl: only %1 can turn that one off")
                         .arg(machine.words.whereTheRestIsTurnedOff));
    else
        printProblem(action.act == disable
                         ? QStringLiteral("swabbyctl: it could not be turned off for good; it may be stopped "
                                          "now, but it will come back at the next login")
                         : QStringLiteral("swabbyctl: that did not work; everything is as it was"));
    return isDone ? done : notDone;
}

} // namespace

int runStartup(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    if (arguments.operands.isEmpty())
        return printItems(arguments, LoginItemScanner::scan(*machine->startup, *machine->boot),
                          QStringLiteral("Nothing starts by itself here.\n"));
    const QString &word = arguments.operands.first();
    if (word == QLatin1String("disabled") && arguments.operands.size() == 1)
        return printItems(arguments, LoginItemScanner::disabledItems(*machine->startupControl),
                          QStringLiteral("Nothing was turned off here.\n"));
    const auto action = std::find_if(actions.begin(), actions.end(),
                                     [&](const Action &known) { return word == QLatin1String(known.word); });
    if (action != actions.end() && arguments.operands.size() == 2)
        return change(arguments, *action, *machine);
    printProblem(QStringLiteral("swabbyctl: no \"startup %1\" with so many arguments; usage: swabbyctl %2")
                     .arg(word, QLatin1String(arguments.row->usage)));
    return wrongUsage;
}

} // namespace swabby
