#pragma once

#include "cleanup/CleanupReport.h"
#include "engine/HistoryPoint.h"
#include "health/HealthIssue.h"
#include "health/LeakSuspect.h"
#include "state/MachineSampler.h"

#include <optional>
#include <set>

namespace swabby {

/// Everything that is published, as one value: what the last refresh found, and what became of it.
struct Published : MachineSample {
    History history;
    HealthLevel health = HealthLevel::green;
    QList<HealthIssue> healthIssues;
    QList<LeakSuspect> leakSuspects;
    std::set<QString> pinnedNames;
    std::optional<double> lastScan;     ///< of the last full check, seconds since 1970
    std::optional<double> snoozedUntil; ///< seconds since 1970
    bool isScanning = false;
    bool isRemoving = false;
    std::optional<CleanupReport> lastCleanup; ///< while its banner is up
    std::optional<MainSection> requestedMainSection;
    Permissions::Refused refused; ///< what the person has not allowed, as noticed by now
    QString historyTrouble;       ///< why the history cannot be stored; empty while it can
    int refreshesApplied = 0;     ///< 0 while the first one still runs

    /// The program of that id in one of the lists; none when it is in none.
    std::optional<ProcessSample> findProcess(std::int32_t pid) const;
};

} // namespace swabby
