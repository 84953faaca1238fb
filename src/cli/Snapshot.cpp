#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/StateText.h"
#include "cli/Verbs.h"

#include <QtCore/QCoreApplication>

namespace swabby {

// "snapshot" and "context" look once and leave no trace.
int runSnapshot(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    const bool wantsContext = arguments.verb == QLatin1String("context");
    const int refreshes = machine->refreshesUntilReal;
    AppState state(machine, Record::nothing);
    QObject::connect(&state, &AppState::applied, &state, [&] {
        if (state.refreshesApplied() < refreshes) {
            state.refresh();
            return;
        }
        if (arguments.json)
            print(jsonText(wantsContext ? QJsonValue(state.systemContextSummary())
                                        : QJsonValue(toJson(state))) +
                  '\n');
        else
            print(wantsContext ? state.systemContextSummary() + QLatin1Char('\n') : stateText(state));
        QCoreApplication::exit(done);
    });
    state.refresh();
    return QCoreApplication::exec();
}

} // namespace swabby
