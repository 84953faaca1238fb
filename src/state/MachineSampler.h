#pragma once

#include "engine/BrowserRollupEntry.h"
#include "engine/Probes.h"
#include "engine/ProcessSample.h"
#include "engine/SystemStats.h"
#include "platform/Machine.h"
#include "startup/LoginItem.h"

#include <QtCore/QList>

#include <mutex>

namespace swabby {

/// Everything one refresh found, before anything is judged.
struct MachineSample {
    SystemStats stats;
    QList<ProcessSample> processes;
    QList<ProcessSample> batteryDrainers;
    QList<ProcessSample> networkUsers;
    QList<BrowserRollupEntry> browserRollups;
    QList<LoginItem> loginItems;
};

/// The background half of a refresh. Passes may overlap.
class MachineSampler {
public:
    explicit MachineSampler(Machine &machine) : m_machine(machine) {}

    /// Samples the whole machine. Strictly synchronous; blocks for seconds.
    MachineSample sample();

private:
    BatteryHealth batteryHealth();

    Machine &m_machine;
    CPUMonitor m_cpuMonitor;

    std::mutex m_batteryMutex;
    std::optional<double> m_lastBatteryHealthFetch;
    BatteryHealth m_cachedBatteryHealth;
    bool m_batteryHealthIsBeingRead = false;
};

} // namespace swabby
