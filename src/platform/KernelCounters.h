#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <optional>

namespace swabby {

/// Processor time since boot, summed over all processors, in ticks.
struct CpuTicks {
    std::uint64_t user = 0;
    std::uint64_t system = 0;
    std::uint64_t idle = 0;
    std::uint64_t nice = 0;
};

/// How the machine's memory is held, in pages of pageSize bytes.
struct MemoryPages {
    std::uint64_t pageSize = 0;
    std::uint64_t active = 0;
    std::uint64_t wired = 0;      ///< cannot be paged out
    std::uint64_t compressed = 0; ///< held by the compressor
};

/// Capacities of the volume a person fills, in bytes; a value that could not be had is 0.
struct VolumeCapacity {
    std::int64_t freeBytes = 0; ///< what the user may still fill
    std::int64_t totalBytes = 0;
    QString mountPoint; ///< which volume it is; empty where there is but one
};

/// How hot the machine runs, in rising order.
enum class ThermalState { nominal, fair, serious, critical };

/// Figures the kernel keeps. None of these calls waits for anything but the kernel.
class KernelCounters {
public:
    virtual ~KernelCounters() = default;

    /// No value when the counters cannot be read.
    virtual std::optional<CpuTicks> cpuTicks() = 0;
    /// What they said when this program began, for the first reading to compare with. No value where nobody
    /// looked.
    virtual std::optional<CpuTicks> cpuTicksAtStart() { return std::nullopt; }
    /// No value when the counts cannot be read.
    virtual std::optional<MemoryPages> memoryPages() = 0;
    /// Bytes of memory in the machine, 0 when unknown.
    virtual std::uint64_t physicalMemory() = 0;
    /// Bytes of swap in use, 0 when unknown.
    virtual std::uint64_t swapUsedBytes() = 0;
    virtual VolumeCapacity startupVolume() = 0;
    /// Nominal where the machine does not say.
    virtual ThermalState thermalState() = 0;
};

} // namespace swabby
