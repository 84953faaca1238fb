#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/Verbs.h"
#include "flows/cleanup/ConfirmationBuilder.h"
#include "flows/cleanup/QuitFlow.h"

#include <QtCore/QCoreApplication>

namespace swabby {
namespace {

void printQuit(const Arguments &arguments, const ConfirmationInfo &info, bool confirmed, bool wasTold)
{
    if (arguments.json)
        print(jsonText(QJsonObject{{QStringLiteral("title"), info.title},
                                   {QStringLiteral("message"), info.message},
                                   {QStringLiteral("confirmLabel"), info.confirmLabel},
                                   {QStringLiteral("trustRatio"), *info.trustRatio},
                                   {QStringLiteral("recommendation"), caseName(*info.recommendation)},
                                   {QStringLiteral("confirmed"), confirmed}}) +
              '\n');
    else if (wasTold)
        print(QStringLiteral("It was told to quit.\n"));
    if (confirmed && !wasTold)
        printProblem(
            QStringLiteral("swabbyctl: it could not be told to quit; it goes on, or has ended by itself"));
    else if (!confirmed && !arguments.json)
        print(QStringLiteral("It goes on.\n"));
    QCoreApplication::exit(wasTold ? done : notDone);
}

void askAndQuit(const Arguments &arguments, const ProcessSample &process, QuitFlow &flow)
{
    const auto force = arguments.force ? Quitting::Force::yes : Quitting::Force::no;
    const ConfirmationInfo info = ConfirmationBuilder::quit(process, force, flow);
    if (process.holdsSession && !arguments.force) {
        printQuit(arguments, info, false, false);
        printProblem(QStringLiteral("swabbyctl: %1 keeps your session running; --force ends it all the same")
                         .arg(process.name));
        return;
    }
    if (!isAgreed(arguments, info)) {
        printQuit(arguments, info, false, false);
        return;
    }
    QObject::connect(&flow, &QuitFlow::finished, &flow,
                     [=](std::int32_t /*pid*/, bool wasTold) { printQuit(arguments, info, true, wasTold); });
    info.onConfirm();
}

} // namespace

int runQuit(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    bool isNumber = false;
    const std::int32_t pid = arguments.operands.first().toInt(&isNumber);
    if (!isNumber) {
        printProblem(
            QStringLiteral("swabbyctl: quit takes a process id, not \"%1\"").arg(arguments.operands.first()));
        return wrongUsage;
    }
    AppState state(machine, Record::nothing);
    QuitFlow flow(state);
    return runRefreshed(state, machine->refreshesUntilReal, [&] {
        if (const auto process = findProcess(pid, state)) {
            askAndQuit(arguments, *process, flow);
            return;
        }
        if (arguments.json)
            print(jsonText(QJsonValue::Null) + '\n');
        printProblem(QStringLiteral("swabbyctl: no program with the process id %1").arg(pid));
        QCoreApplication::exit(notDone);
    });
}

} // namespace swabby
