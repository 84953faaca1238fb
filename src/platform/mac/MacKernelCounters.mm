#include "platform/mac/MacKernelCounters.h"

#include "platform/mac/Owned.h"

#import <Foundation/Foundation.h>

#include <mach/mach.h>
#include <sys/sysctl.h>

namespace swabby {
namespace {

// Each call of the system's own function takes a right to the port that would have to be given back.
host_t thisHost()
{
    static const host_t host = mach_host_self();
    return host;
}

template <typename Value>
Value systemValue(const char *name)
{
    Value value = {};
    std::size_t size = sizeof value;
    return sysctlbyname(name, &value, &size, nullptr, 0) == 0 ? value : Value{};
}

std::int64_t capacity(CFURLRef volume, CFStringRef key)
{
    CFTypeRef found = nullptr;
    if (!CFURLCopyResourcePropertyForKey(volume, key, &found, nullptr) || found == nullptr)
        return 0;
    const Owned<CFTypeRef> owned(found);
    std::int64_t bytes = 0;
    if (CFGetTypeID(found) != CFNumberGetTypeID() ||
        !CFNumberGetValue(static_cast<CFNumberRef>(found), kCFNumberSInt64Type, &bytes))
        return 0;
    return bytes;
}

} // namespace

std::optional<CpuTicks> MacKernelCounters::cpuTicks()
{
    host_cpu_load_info_data_t load = {};
    mach_msg_type_number_t count = HOST_CPU_LOAD_INFO_COUNT;
    if (host_statistics(thisHost(), HOST_CPU_LOAD_INFO, reinterpret_cast<host_info_t>(&load), &count) !=
        KERN_SUCCESS)
        return std::nullopt;
    return CpuTicks{load.cpu_ticks[CPU_STATE_USER], load.cpu_ticks[CPU_STATE_SYSTEM],
                    load.cpu_ticks[CPU_STATE_IDLE], load.cpu_ticks[CPU_STATE_NICE]};
}

std::optional<MemoryPages> MacKernelCounters::memoryPages()
{
    vm_statistics64_data_t pages = {};
    mach_msg_type_number_t count = HOST_VM_INFO64_COUNT;
    if (host_statistics64(thisHost(), HOST_VM_INFO64, reinterpret_cast<host_info64_t>(&pages), &count) !=
        KERN_SUCCESS)
        return std::nullopt;
    return MemoryPages{vm_kernel_page_size, pages.active_count, pages.wire_count,
                       pages.compressor_page_count};
}

std::uint64_t MacKernelCounters::physicalMemory()
{
    return systemValue<std::uint64_t>("hw.memsize");
}

std::uint64_t MacKernelCounters::swapUsedBytes()
{
    return systemValue<xsw_usage>("vm.swapusage").xsu_used;
}

VolumeCapacity MacKernelCounters::startupVolume()
{
    const Owned<CFURLRef> volume(
        CFURLCreateWithFileSystemPath(kCFAllocatorDefault, CFSTR("/"), kCFURLPOSIXPathStyle, true));
    if (volume == nullptr)
        return {};
    return {capacity(volume.get(), kCFURLVolumeAvailableCapacityForImportantUsageKey),
            capacity(volume.get(), kCFURLVolumeTotalCapacityKey),
            {}};
}

ThermalState MacKernelCounters::thermalState()
{
    switch (NSProcessInfo.processInfo.thermalState) {
    case NSProcessInfoThermalStateFair:
        return ThermalState::fair;
    case NSProcessInfoThermalStateSerious:
        return ThermalState::serious;
    case NSProcessInfoThermalStateCritical:
        return ThermalState::critical;
    case NSProcessInfoThermalStateNominal:
        break;
    }
    return ThermalState::nominal;
}

} // namespace swabby
