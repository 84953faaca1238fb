#pragma once

#include "platform/KernelCounters.h"

#include <cstdint>
#include <optional>

namespace swabby {

/// One snapshot of the whole machine.
struct SystemStats {
    double timestamp = 0; ///< seconds since 1970
    double cpuUsagePercent = 0;
    std::uint64_t memUsedBytes = 0; ///< active + wired + compressed
    std::uint64_t memTotalBytes = 0;
    double memPressurePercent = 0; ///< wired + compressed, as a share of the physical memory
    std::uint64_t swapUsedBytes = 0;
    std::int64_t diskFreeBytes = 0;
    std::int64_t diskTotalBytes = 0;
    QString diskMountPoint;            ///< which volume that is; empty where there is but one
    std::optional<int> batteryPercent; ///< absent on a machine without a battery
    bool isCharging = false;
    std::optional<int> timeRemainingMinutes; ///< to empty, or to full while charging
    std::optional<int> batteryCycleCount;
    std::optional<int> batteryHealthPercent;
    ThermalState thermalState = ThermalState::nominal;

    bool operator==(const SystemStats &) const = default;
};

/// Memory in use as a share of all memory, 0–100; 0 when the total is unknown.
double memoryPercent(const SystemStats &stats);

/// " on /home", behind what is said of the storage; empty where there is but one volume.
QString volumeText(const SystemStats &stats);

} // namespace swabby
