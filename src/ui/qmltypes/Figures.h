#pragma once

#include "engine/BrowserRollupEntry.h"
#include "engine/HistoryPoint.h"
#include "engine/ProcessSample.h"
#include "engine/SystemStats.h"
#include "health/HealthIssue.h"
#include "health/LeakSuspect.h"
#include "startup/LoginItem.h"

#include <set>

namespace swabby {

class AppState;

/// What the state publishes, as one value: what a view draws.
struct Figures {
    SystemStats stats;
    QList<ProcessSample> processes;
    QList<ProcessSample> batteryDrainers;
    QList<ProcessSample> networkUsers;
    QList<BrowserRollupEntry> browserRollups;
    QList<LoginItem> loginItems;
    History history;
    HealthLevel health = HealthLevel::green;
    QList<HealthIssue> healthIssues;
    QList<LeakSuspect> leakSuspects;
    std::set<QString> pinnedNames;
    double time = 0;           ///< of the last refresh, before the first one now
    bool isKnown = false;      ///< a refresh has been applied
    bool speedIsKnown = false; ///< the machine has been looked at long enough for figures over time
};

Figures figuresOf(const AppState &state);

} // namespace swabby
