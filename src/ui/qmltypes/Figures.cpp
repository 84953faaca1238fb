#include "ui/qmltypes/Figures.h"

#include "state/AppState.h"
#include "ui/qmltypes/WindowContext.h"

namespace swabby {

Figures figuresOf(const AppState &state)
{
    return {
        .stats = state.stats(),
        .processes = state.processes(),
        .batteryDrainers = state.batteryDrainers(),
        .networkUsers = state.networkUsers(),
        .browserRollups = state.browserRollups(),
        .loginItems = state.loginItems(),
        .history = state.history(),
        .health = state.health(),
        .healthIssues = state.healthIssues(),
        .leakSuspects = state.leakSuspects(),
        .pinnedNames = state.pinnedNames(),
        .time = state.refreshesApplied() > 0 ? state.stats().timestamp : state.machine().clock->now(),
        .isKnown = state.refreshesApplied() > 0,
        .speedIsKnown = state.refreshesApplied() >= refreshesUntilFigures(state.machine()),
    };
}

} // namespace swabby
