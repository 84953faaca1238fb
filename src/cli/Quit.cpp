#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/Verbs.h"
#include "flows/cleanup/ConfirmationBuilder.h"
#include "flows/cleanup/QuitFlow.h"
#include "platform/WhenDone.h"

#include <QtCore/QCoreApplication>

namespace swabby {
namespace {

/// What the question came to, or that it was not even asked.
void printQuit(const Arguments &arguments, const ConfirmationInfo &info, bool confirmed, bool isOver)
{
    if (arguments.json)
        print(jsonText(QJsonObject{{QStringLiteral("title"), info.title},
                                   {QStringLiteral("message"), info.message},
                                   {QStringLiteral("confirmLabel"), info.confirmLabel},
                                   {QStringLiteral("trustRatio"), *info.trustRatio},
                                   {QStringLiteral("recommendation"), caseName(*info.recommendation)},
                                   {QStringLiteral("confirmed"), confirmed}}) +
              '\n');
    else if (isOver)
        print(QStringLiteral("It was told to quit.\n"));
    else if (!confirmed)
        print(QStringLiteral("It goes on.\n"));
    QCoreApplication::exit(isOver ? done : notDone);
}

/// Why a program that was to be quit still runs.
QString problemText(const ProcessSample &process, Quitting::Outcome outcome)
{
    if (outcome == Quitting::Outcome::isAsked)
        return QStringLiteral(
            "it was asked to quit and is still running: it may be asking you something in its "
            "own window");
    if (outcome == Quitting::Outcome::runsOn)
        return QStringLiteral("it was told to quit and is still running");
    return process.mayBeQuit()
               ? QStringLiteral("it could not be told to quit; it goes on, or has ended by itself")
               : QStringLiteral("still running: it ") + whyNotQuit(process);
}

void askAndQuit(const Arguments &arguments, const ProcessSample &process, const QuitPlan &plan,
                QuitFlow &flow)
{
    const ConfirmationInfo info = ConfirmationBuilder::quit(process, plan, flow);
    if (!process.mayBeQuit() && !arguments.force) {
        printQuit(arguments, info, false, false);
        const QString hint =
            process.holdsSession ? QStringLiteral("; --force ends it all the same") : QString();
        printProblem(QStringLiteral("swabbyctl: %1 %2").arg(process.name, whyNotQuit(process)) + hint);
        return;
    }
    if (!isAgreed(arguments, info)) {
        printQuit(arguments, info, false, false);
        return;
    }
    QObject::connect(&flow, &QuitFlow::finished, &flow, [=](std::int32_t, Quitting::Outcome outcome) {
        printQuit(arguments, info, true, isOver(outcome));
        if (!isOver(outcome))
            printProblem(QStringLiteral("swabbyctl: ") + problemText(process, outcome));
    });
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
            const auto force = arguments.force ? Quitting::Force::yes : Quitting::Force::no;
            whenKnown(&flow, flow.plan(*process, force), [&, process = *process](const QuitPlan &plan) {
                askAndQuit(arguments, process, plan, flow);
            });
            return;
        }
        if (arguments.json)
            print(jsonText(QJsonValue::Null) + '\n');
        printProblem(QStringLiteral("swabbyctl: no program with the process id %1").arg(pid));
        QCoreApplication::exit(notDone);
    });
}

} // namespace swabby
