#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/StateText.h"
#include "cli/Verbs.h"

#include <QtCore/QCoreApplication>

namespace swabby {

int runRefreshed(AppState &state, int refreshes, const std::function<void()> &then)
{
    QObject::connect(&state, &AppState::applied, &state, [&state, refreshes, then] {
        if (state.refreshesApplied() < refreshes)
            state.refresh();
        else if (state.refreshesApplied() == refreshes)
            then();
    });
    state.refresh();
    const int status = QCoreApplication::exec();
    // Whoever has work under way waits for its tools, and is gone before the state.
    state.machine().stop.requestStop();
    return status;
}

// "snapshot" and "context" look and leave no trace.
int runSnapshot(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    const bool wantsContext = arguments.verb == QLatin1String("context");
    AppState state(machine, Record::nothing);
    return runRefreshed(state, machine->refreshesUntilReal, [&] {
        if (arguments.json)
            print(jsonText(wantsContext ? QJsonValue(state.systemContextSummary())
                                        : QJsonValue(toJson(state, {}))) +
                  '\n');
        else
            print(wantsContext ? state.systemContextSummary() + QLatin1Char('\n') : stateText(state));
        QCoreApplication::exit(done);
    });
}

} // namespace swabby
