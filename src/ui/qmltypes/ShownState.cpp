#include "ui/qmltypes/ShownState.h"

#include "ui/qmltypes/WindowContext.h"

namespace swabby {

ShownState shownStateOf(const AppState &state)
{
    const bool isKnown = state.refreshesApplied() > 0;
    return {state.published(), state.machine().words,
            isKnown ? state.stats().timestamp : state.machine().clock->now(), isKnown,
            state.refreshesApplied() >= refreshesUntilFigures(state.machine())};
}

} // namespace swabby
