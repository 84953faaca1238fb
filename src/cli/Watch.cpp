#include "ai/CloudAI.h"
#include "cleanup/Search.h"
#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/StateText.h"
#include "cli/Verbs.h"
#include "flows/health/NotificationFlow.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

#include <limits>
#include <utility>

namespace swabby {
namespace {

QString watchText(const AppState &state, const QList<Notification> &posted)
{
    QString text = stateLine(state);
    for (const Notification &notification : posted)
        text += QStringLiteral("          ") + inBold(notification.title) + QStringLiteral(" - ") +
                harmless(notification.body) + QLatin1Char('\n');
    return text;
}

} // namespace

// The application without windows. A running clock sets the pace, whatever became of the refresh before; a
// fixed one is moved on as soon as all that refresh started is done, or after the same time when it does not
// get applied.
int runWatch(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    printSettingsProblem(*machine);
    AppState state(machine, Record::everything);
    CloudAI ai(machine, modelAddressesFromEnvironment());
    NotificationFlow notifications(
        state, ai, [machine](const ScanControl &control) { return reclaimableStorage(*machine, control); });
    if (arguments.snooze)
        state.snoozeUntil(machine->clock->now() + *arguments.snooze);

    QString told;
    const auto tellTrouble = [&](const QString &why) {
        if (std::exchange(told, why) != why && !why.isEmpty())
            printProblem(QStringLiteral("swabbyctl: the history could not be stored: %1").arg(why));
    };
    QObject::connect(&state, &AppState::historyNotStored, &state, tellTrouble);

    QTimer pace;
    pace.setTimerType(Qt::PreciseTimer);
    constexpr double millisecondsPerSecond = 1'000;
    pace.setInterval(static_cast<int>(std::min(arguments.interval * millisecondsPerSecond,
                                               static_cast<double>(std::numeric_limits<int>::max()))));
    const auto refreshNext = [&] {
        machine->clock->advance(arguments.interval);
        state.refresh();
        pace.start();
    };
    QObject::connect(&pace, &QTimer::timeout, &state, refreshNext);
    if (machine->clock->isFixed()) {
        // Without a time of its own such a machine would be asked again and again before it has answered.
        pace.setInterval(std::max(pace.intervalAsDuration(), std::chrono::milliseconds(1'000)));
        QObject::connect(&state, &AppState::applied, &pace, &QTimer::stop);
    }
    int lines = 0;
    QObject::connect(&notifications, &NotificationFlow::settled, &state,
                     [&](const QList<Notification> &posted) {
                         print(arguments.json ? jsonText(toJson(state, posted)) + '\n'
                                              : watchText(state, posted).toUtf8());
                         if (++lines == arguments.refreshes.value_or(0))
                             QCoreApplication::exit(done);
                         else if (machine->clock->isFixed())
                             refreshNext();
                     });
    state.refresh();
    pace.start();
    const int status = QCoreApplication::exec();
    machine->stop.requestStop();
    tellTrouble(state.finishHistory());
    return status;
}

} // namespace swabby
