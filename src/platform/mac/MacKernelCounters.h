#pragma once

#include "platform/KernelCounters.h"

namespace swabby {

/// What the kernel, the start-up volume and the process information say.
class MacKernelCounters final : public KernelCounters {
public:
    std::optional<CpuTicks> cpuTicks() override;
    std::optional<MemoryPages> memoryPages() override;
    std::uint64_t physicalMemory() override;
    std::uint64_t swapUsedBytes() override;
    VolumeCapacity startupVolume() override;
    ThermalState thermalState() override;
};

} // namespace swabby
