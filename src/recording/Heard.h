#pragma once

#include "platform/Machine.h"

#include <map>
#include <mutex>

namespace swabby {

/// What a machine said to whoever looked at it.
struct Heard {
    std::mutex mutex; ///< of the runs, which come from several threads
    std::vector<ToolRun> runs;

    std::optional<CpuTicks> ticksAtStart;
    std::vector<CpuTicks> ticks;
    std::optional<MemoryPages> pages;
    std::uint64_t physicalBytes = 0;
    std::uint64_t swapUsedBytes = 0;
    VolumeCapacity volume;
    std::vector<ThermalState> thermal;
    std::optional<PowerSource> power;
    BatteryHealth batteryHealth;

    std::optional<std::vector<ProcessRow>> busiest;
    std::optional<std::vector<ProcessRow>> largest;
    std::map<std::int32_t, ProcessRow> matched;
    std::vector<ProcessWeight> weights;
    std::vector<PowerRow> drains;
    std::vector<NetworkRow> traffic;

    std::vector<StartupEntry> startup;
    std::optional<double> bootEpoch;
    std::map<std::int32_t, double> startEpochs;
};

/// From here on whatever the machine says of itself is noted too. Its services stay as they were for those
/// who hold one already.
std::shared_ptr<Heard> listenTo(Machine &machine);

} // namespace swabby
