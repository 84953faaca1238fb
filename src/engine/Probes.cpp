#include "engine/Probes.h"

#include <algorithm>

namespace swabby {

double CPUMonitor::sample(KernelCounters &kernel)
{
    const std::optional<CpuTicks> current = kernel.cpuTicks();
    if (!current)
        return 0;
    const std::scoped_lock guard(m_mutex);
    std::optional<CpuTicks> previous = std::exchange(m_prevInfo, current);
    if (!previous)
        previous = kernel.cpuTicksAtStart();
    if (!previous)
        return 0;
    // In doubles, so that a counter that wrapped counts as negative rather than as a huge step.
    const auto since = [](std::uint64_t now, std::uint64_t before) {
        return static_cast<double>(now) - static_cast<double>(before);
    };
    const double busy = since(current->user, previous->user) + since(current->system, previous->system) +
                        since(current->nice, previous->nice);
    const double total = busy + since(current->idle, previous->idle);
    return total > 0 ? std::clamp(busy / total * 100, 0.0, 100.0) : 0;
}

MemoryMonitor::Figures MemoryMonitor::sample(KernelCounters &kernel, std::uint64_t physicalMemory)
{
    const std::optional<MemoryPages> pages = kernel.memoryPages();
    if (!pages)
        return {};
    const std::uint64_t held = pages->pageSize * (pages->wired + pages->compressed);
    return {.usedBytes = pages->pageSize * pages->active + held,
            .pressurePercent = physicalMemory == 0
                                   ? 0
                                   : static_cast<double>(held) / static_cast<double>(physicalMemory) * 100,
            .swapUsed = kernel.swapUsedBytes()};
}

BatteryMonitor::Charge BatteryMonitor::sample(PowerSupply &power)
{
    const std::optional<PowerSource> source = power.firstSource();
    if (!source)
        return {};
    Charge charge = {.percent = source->currentCapacity,
                     .charging = source->isCharging.value_or(false),
                     .minutesRemaining = std::nullopt};
    // Below 1 the system is still estimating.
    const std::optional<int> minutes = charge.charging ? source->timeToFullCharge : source->timeToEmpty;
    if (minutes && *minutes >= 1)
        charge.minutesRemaining = minutes;
    return charge;
}

QString BatteryMonitor::healthBand(int healthPercent, const MachineWords &words)
{
    if (healthPercent < 70)
        return QStringLiteral("Worn — %1 having this battery checked out or replaced.")
            .arg(words.batteryAdvice);
    if (healthPercent < 80)
        return QStringLiteral("Fair — you'll likely notice shorter battery life than when it was new.");
    if (healthPercent < 90)
        return QStringLiteral("Good — this battery still holds a solid charge.");
    return QStringLiteral("Excellent — this battery is basically like new.");
}

std::optional<int> BootTime::delaySeconds(BootClock &boot, std::int32_t pid)
{
    constexpr double limitSeconds = 600;
    const std::optional<double> bootEpoch = boot.bootEpoch();
    if (!bootEpoch)
        return std::nullopt;
    const std::optional<double> startEpoch = boot.startEpoch(pid);
    if (!startEpoch)
        return std::nullopt;
    const double delay = *startEpoch - *bootEpoch;
    if (delay < 0 || delay >= limitSeconds)
        return std::nullopt;
    return static_cast<int>(delay);
}

} // namespace swabby
