#include "platform/linux/LinuxKernelCounters.h"

#include "platform/linux/KernelFile.h"
#include "platform/linux/ThermalZones.h"
#include "platform/linux/Volumes.h"

#include <algorithm>
#include <array>

namespace swabby {

namespace {

/// Bytes of memory that the compressed swap devices (zram) hold: the third figure of their mm_stat.
std::uint64_t zramBytes(const std::string &sysRoot)
{
    std::uint64_t sum = 0;
    for (const std::string &device : folderEntries(sysRoot + "/block")) {
        if (!device.starts_with("zram"))
            continue;
        const std::string text = fileText(sysRoot + "/block/" + device + "/mm_stat");
        std::string_view rest = text;
        nextWord(rest);
        nextWord(rest);
        sum += integerOf<std::uint64_t>(nextWord(rest)).value_or(0);
    }
    return sum;
}

} // namespace

std::optional<CpuTicks> cpuTicksFrom(std::string_view statText)
{
    std::string_view line = statText.substr(0, statText.find('\n'));
    if (nextWord(line) != "cpu")
        return std::nullopt;

    // user nice system idle iowait irq softirq steal; the guest counts after them are in user and nice.
    std::array<std::uint64_t, 8> ticks{};
    constexpr std::size_t needed = 4;
    for (std::size_t index = 0; index < ticks.size(); ++index) {
        const auto number = integerOf<std::uint64_t>(nextWord(line));
        if (!number && index < needed)
            return std::nullopt;
        ticks[index] = number.value_or(0);
    }
    const auto [user, nice, system, idle, ioWait, interrupts, softInterrupts, stolen] = ticks;
    // Stolen time counts as busy: there was work, the host just did not run it.
    return CpuTicks{user, system + interrupts + softInterrupts + stolen, idle + ioWait, nice};
}

std::optional<MemoryInfo> memoryInfoFrom(std::string_view meminfoText)
{
    MemoryInfo info;
    bool hasAvailable = false;
    while (const auto line = nextLine(meminfoText)) {
        std::string_view rest = *line;
        const std::string_view key = nextWord(rest);
        const auto number = kibibytesOf(nextWord(rest));
        if (!number)
            continue;
        if (key == "MemTotal:") {
            info.total = *number;
        } else if (key == "MemAvailable:") {
            info.available = *number;
            hasAvailable = true;
        } else if (key == "SwapTotal:") {
            info.swapTotal = *number;
        } else if (key == "SwapFree:") {
            info.swapFree = *number;
        } else if (key == "Unevictable:") {
            info.unevictable = *number;
        } else if (key == "SUnreclaim:") {
            info.unreclaimableSlab = *number;
        } else if (key == "KernelStack:") {
            info.kernelStack = *number;
        } else if (key == "PageTables:") {
            info.pageTables = *number;
        } else if (key == "Zswap:") {
            info.zswap = *number;
        }
    }
    if (info.total == 0 || !hasAvailable)
        return std::nullopt;
    return info;
}

MemoryPages memoryPagesFrom(const MemoryInfo &info, std::uint64_t zramBytes)
{
    constexpr std::uint64_t pageSize = 1024;
    const std::uint64_t used = info.total > info.available ? info.total - info.available : 0;
    // Locked memory (Mlocked) is unevictable too and not added again.
    const std::uint64_t held = info.unreclaimableSlab + info.kernelStack + info.pageTables + info.unevictable;

    MemoryPages pages;
    pages.pageSize = pageSize;
    // The parts are counted at other moments than the whole: they never make it larger.
    pages.compressed = std::min(info.zswap + zramBytes / pageSize, used);
    pages.wired = std::min(held, used - pages.compressed);
    pages.active = used - pages.compressed - pages.wired;
    return pages;
}

LinuxKernelCounters::LinuxKernelCounters(Roots roots)
    : m_roots(std::move(roots)), m_ticksAtStart(LinuxKernelCounters::cpuTicks())
{
}

std::optional<CpuTicks> LinuxKernelCounters::cpuTicks()
{
    return cpuTicksFrom(fileText(m_roots.proc + "/stat"));
}

std::optional<MemoryPages> LinuxKernelCounters::memoryPages()
{
    const auto info = memoryInfo();
    if (!info)
        return std::nullopt;
    return memoryPagesFrom(*info, zramBytes(m_roots.sys));
}

std::uint64_t LinuxKernelCounters::physicalMemory()
{
    const auto info = memoryInfo();
    return info ? info->total * 1024 : 0;
}

std::uint64_t LinuxKernelCounters::swapUsedBytes()
{
    const auto info = memoryInfo();
    return info && info->swapTotal > info->swapFree ? (info->swapTotal - info->swapFree) * 1024 : 0;
}

VolumeCapacity LinuxKernelCounters::startupVolume()
{
    return fullestOf(volumesOf(m_roots.volumes));
}

ThermalState LinuxKernelCounters::thermalState()
{
    return thermalStateOf(m_roots.sys + "/class/thermal");
}

std::optional<MemoryInfo> LinuxKernelCounters::memoryInfo() const
{
    return memoryInfoFrom(fileText(m_roots.proc + "/meminfo"));
}

} // namespace swabby
