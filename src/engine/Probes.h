#pragma once

#include "platform/BootClock.h"
#include "platform/KernelCounters.h"
#include "platform/MachineWords.h"
#include "platform/PowerSupply.h"

#include <QtCore/QString>

#include <mutex>
#include <optional>

namespace swabby {

/// Turns the kernel's cumulative ticks into a load. Passes that overlap may share one; the later of them
/// then measures a very short interval.
class CPUMonitor {
public:
    /// The load in percent since the previous call, at the first since the program began where the kernel's
    /// counters know of that time. 0 when there is nothing to compare with.
    double sample(KernelCounters &kernel);

private:
    std::mutex m_mutex;
    std::optional<CpuTicks> m_prevInfo;
};

namespace MemoryMonitor {

struct Figures {
    std::uint64_t usedBytes = 0;
    double pressurePercent = 0;
    std::uint64_t swapUsed = 0;
};

/// All 0 when the page counts cannot be read.
Figures sample(KernelCounters &kernel, std::uint64_t physicalMemory);

} // namespace MemoryMonitor

namespace BatteryMonitor {

struct Charge {
    std::optional<int> percent; ///< absent on a machine without a battery
    bool charging = false;
    std::optional<int> minutesRemaining; ///< to full while charging, else to empty
};

Charge sample(PowerSupply &power);

/// One sentence on how worn a battery is.
QString healthBand(int healthPercent, const MachineWords &words);

} // namespace BatteryMonitor

namespace BootTime {

/// Whole seconds between the boot and the start of a process, when that is below ten minutes: whoever
/// began later did not start with the machine. May run tools.
std::optional<int> delaySeconds(BootClock &boot, std::int32_t pid);

} // namespace BootTime

} // namespace swabby
