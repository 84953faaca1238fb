#pragma once

#include "platform/KernelCounters.h"

#include <string>
#include <string_view>
#include <vector>

namespace swabby {

/// The first line of /proc/stat as the four counters: a guest's time is part of user and nice already,
/// waiting for a disk is idle, interrupts and time taken by the host are system. No value when garbled.
std::optional<CpuTicks> cpuTicksFrom(std::string_view statText);

/// The counts of /proc/meminfo that Swabby uses, in KiB; what is not listed is 0.
struct MemoryInfo {
    std::uint64_t total = 0;
    std::uint64_t available = 0;
    std::uint64_t swapTotal = 0;
    std::uint64_t swapFree = 0;
    std::uint64_t unevictable = 0;
    std::uint64_t unreclaimableSlab = 0;
    std::uint64_t kernelStack = 0;
    std::uint64_t pageTables = 0;
    std::uint64_t zswap = 0; ///< memory that holds compressed pages
};

/// No value without the total or the available memory.
std::optional<MemoryInfo> memoryInfoFrom(std::string_view meminfoText);

/// Splits total − available, which is what `free` shows as used, into wired, compressed and the rest, in
/// pages of 1 KiB. zramBytes is the memory all compressed swap devices hold.
MemoryPages memoryPagesFrom(const MemoryInfo &info, std::uint64_t zramBytes);

/// Figures from /proc, /sys and statvfs. Safe to call from several threads.
class LinuxKernelCounters final : public KernelCounters {
public:
    struct Roots {
        std::string proc;
        std::string sys;
        std::vector<std::string> volumes; ///< a path on each volume that a person fills
    };

    explicit LinuxKernelCounters(Roots roots);

    std::optional<CpuTicks> cpuTicks() override;
    std::optional<CpuTicks> cpuTicksAtStart() override { return m_ticksAtStart; }
    std::optional<MemoryPages> memoryPages() override;
    std::uint64_t physicalMemory() override;
    std::uint64_t swapUsedBytes() override;
    /// The fullest of the volumes.
    VolumeCapacity startupVolume() override;
    ThermalState thermalState() override;

private:
    std::optional<MemoryInfo> memoryInfo() const;

    const Roots m_roots;
    const std::optional<CpuTicks> m_ticksAtStart;
};

} // namespace swabby
