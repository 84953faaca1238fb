#include "fuzz/Readers.h"
#include "platform/TextScan.h"
#include "platform/linux/BatteryFiles.h"
#include "platform/linux/EnergyMeter.h"
#include "platform/linux/KernelFile.h"
#include "platform/linux/LinuxBootClock.h"
#include "platform/linux/LinuxKernelCounters.h"
#include "platform/linux/MemoryUse.h"
#include "platform/linux/ProcessStat.h"
#include "platform/linux/ProgramWindows.h"
#include "platform/linux/SocketStatistics.h"
#include "platform/posix/MountTable.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace swabby {
namespace {

using Text = Reader::Text;

bool isWithin(std::optional<int> number, int least, int most)
{
    return !number || (*number >= least && *number <= most);
}

bool memory(Text text)
{
    const auto info = memoryInfoFrom(text);
    if (!info)
        return true;
    const MemoryPages pages = memoryPagesFrom(*info, info->zswap);
    return info->total * 1024 / 1024 == info->total &&
           pages.active + pages.wired + pages.compressed ==
               info->total - std::min(info->available, info->total);
}

bool process(Text text)
{
    const auto stat = processStatFrom(text);
    return !stat || (stat->parentPid >= 0 && stat->threads >= 0 && stat->command.data() >= text.data() &&
                     stat->command.data() + stat->command.size() <= text.data() + text.size());
}

bool threadRuns(Text text)
{
    const ProcessRun before = {{1, threadRunFrom(text)}};
    const ProcessRun after = {{1, threadRunFrom(text.substr(text.size() / 2))}};
    const double impact = energyImpact(before, after, 1);
    return std::isfinite(impact) && impact >= 0;
}

/// The battery's files as lines of "NAME=TEXT".
bool battery(Text text)
{
    const BatteryFile file = [text](const std::string &name) {
        std::string_view rest = text;
        while (const auto line = nextLine(rest))
            if (line->starts_with(name + '='))
                return std::string(line->substr(name.size() + 1));
        return std::string();
    };
    constexpr int longest = 100 * 60;
    const PowerSource source = powerSourceFrom(file);
    const BatteryHealth health = batteryHealthFrom(file);
    return isWithin(source.currentCapacity, 0, 100) && isWithin(source.timeToEmpty, 0, longest) &&
           isWithin(source.timeToFullCharge, 0, longest) && isWithin(health.healthPercent, 0, 100) &&
           isWithin(health.cycles, 1, 100'000);
}

bool sockets(Text text)
{
    std::vector<SocketBytes> found;
    // A datagram begins where the kernel's numbers may stand.
    std::vector<std::uint64_t> aligned(text.size() / sizeof(std::uint64_t) + 1);
    const auto bytes = std::as_writable_bytes(std::span(aligned)).first(text.size());
    std::ranges::copy(std::as_bytes(std::span(text)), bytes.begin());
    addSockets(bytes, found);
    return found.size() <= text.size();
}

bool mounts(Text text)
{
    const std::filesystem::path path = "/home/nia/Pictures";
    return std::ranges::none_of(otherWaysTo(path, text), [&](const auto &way) { return way == path; });
}

} // namespace

Readers kernelReaders()
{
    return {
        {"proc_stat",
         [](Text text) {
             cpuTicksFrom(text);
             return uptimeFrom(text) >= 0 && std::isfinite(bootTimeFrom(text).value_or(0));
         }},
        {"proc_meminfo", memory},
        {"proc_pid_stat", process},
        {"proc_pid_status",
         [](Text text) {
             const auto use = memoryUseFrom(text);
             return !use || memoryTogether({&*use, 1}) >= use->anonymous;
         }},
        {"proc_pid_schedstat", threadRuns},
        {"battery", battery},
        {"socket_statistics", sockets},
        {"proc_net_unix", [](Text text) { return isInUse("/tmp/.X11-unix/X0", text) || !text.empty(); }},
        {"proc_mountinfo", mounts},
    };
}

} // namespace swabby
