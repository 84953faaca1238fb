#pragma once

#include "engine/SystemStats.h"
#include "health/HealthIssue.h"
#include "platform/MachineWords.h"

namespace swabby {

/// The user's limits, in percent.
struct HealthThresholds {
    double cpuYellow = 60;
    double cpuRed = 85;
    double memYellow = 75;
    double memRed = 90;
    double processCpuRed = 80;
};

struct HealthVerdict {
    HealthLevel level = HealthLevel::green;
    QList<HealthIssue> issues;
};

/// What is wrong with the machine, in its words. The processes are those that count: not Swabby's own, not
/// the ones the user pinned.
HealthVerdict computeHealth(const SystemStats &stats, const QList<ProcessSample> &processes,
                            const HealthThresholds &thresholds, const MachineWords &words);

/// What the button on an issue says; absent without an action.
std::optional<QString> actionLabel(const HealthIssue &issue);

/// Whether that button ends a program.
bool isDestructive(const HealthIssue &issue);

/// "Healthy", "Under load" or "Struggling".
QString healthWord(HealthLevel level);

} // namespace swabby
