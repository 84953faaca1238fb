#include "ui/qmltypes/Figures.h"

#include "ui/qmltypes/WindowContext.h"

namespace swabby {

Figures figuresOf(const AppState &state)
{
    const bool isKnown = state.refreshesApplied() > 0;
    return {state.published(), isKnown ? state.stats().timestamp : state.machine().clock->now(), isKnown,
            state.refreshesApplied() >= refreshesUntilFigures(state.machine())};
}

} // namespace swabby
