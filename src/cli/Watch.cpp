#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/StateText.h"
#include "cli/Verbs.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

#include <limits>

namespace swabby {

// The application without windows. A running clock sets the pace, whatever became of the refresh before; a
// fixed one is moved on as soon as that refresh was applied, or after the same time when it never is.
int runWatch(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    AppState state(machine, Record::everything);
    if (arguments.snooze)
        state.snoozeUntil(machine->clock->now() + *arguments.snooze);

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
    QObject::connect(&state, &AppState::applied, &state, [&] {
        print(arguments.json ? jsonText(toJson(state)) + '\n' : stateLine(state).toUtf8());
        if (arguments.refreshes && state.refreshesApplied() >= *arguments.refreshes)
            QCoreApplication::exit(done);
        else if (machine->clock->isFixed())
            refreshNext();
    });
    state.refresh();
    pace.start();
    return QCoreApplication::exec();
}

} // namespace swabby
