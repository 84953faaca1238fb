#pragma once

#include "state/AppState.h"

namespace swabby {

/// What the state publishes, and how far it is to be believed: what a view draws.
struct ShownState : Published {
    MachineWords words;
    double time = 0;           ///< of the last refresh, before the first one now
    bool isKnown = false;      ///< a refresh has been applied
    bool speedIsKnown = false; ///< the machine has been looked at long enough for figures over time
};

ShownState shownStateOf(const AppState &state);

} // namespace swabby
