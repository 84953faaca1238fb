// What a Mac's own headers have to agree with: sizes, places, values and types. Compiles or does not.
#include <CoreFoundation/CoreFoundation.h>
#include <IOKit/ps/IOPSKeys.h>
#include <IOKit/ps/IOPowerSources.h>
#include <Security/Security.h>
#include <mach/mach.h>
#include <sys/sysctl.h>

#include <cstddef>
#include <string_view>
#include <type_traits>

template <typename Is, typename Shall>
constexpr bool same = std::is_same_v<Is, Shall>;

static_assert(HOST_CPU_LOAD_INFO == 3 && HOST_CPU_LOAD_INFO_COUNT == 4 && HOST_VM_INFO64 == 4 &&
              KERN_SUCCESS == 0);
static_assert(CPU_STATE_USER == 0 && CPU_STATE_SYSTEM == 1 && CPU_STATE_IDLE == 2 && CPU_STATE_NICE == 3);
static_assert(offsetof(vm_statistics64_data_t, active_count) == 4);
static_assert(offsetof(vm_statistics64_data_t, wire_count) == 12);
static_assert(offsetof(vm_statistics64_data_t, compressor_page_count) == 128);
static_assert(sizeof(vm_statistics64_data_t) >= 152);
static_assert(sizeof(xsw_usage) == 32 && offsetof(xsw_usage, xsu_used) == 16);
static_assert(same<decltype(&host_statistics64), int (*)(unsigned, int, int *, unsigned *)>);
static_assert(same<decltype(vm_kernel_page_size), unsigned long>);
static_assert(
    same<decltype(&sysctlbyname), int (*)(const char *, void *, std::size_t *, void *, std::size_t)>);

static_assert(kCFNumberSInt32Type == 3 && kCFNumberSInt64Type == 4 && kCFURLPOSIXPathStyle == 0);
static_assert(kCFStringEncodingUTF8 == 0x08000100);
static_assert(same<decltype(&CFArrayGetValueAtIndex), const void *(*)(CFArrayRef, long)>);
static_assert(same<decltype(&CFNumberGetValue), unsigned char (*)(CFNumberRef, long, void *)>);
static_assert(same<decltype(&CFDataGetLength), long (*)(CFDataRef)>);
static_assert(same<decltype(&CFURLCopyResourcePropertyForKey),
                   unsigned char (*)(CFURLRef, CFStringRef, void *, CFErrorRef *)>);

static_assert(same<decltype(&IOPSGetPowerSourceDescription), CFDictionaryRef (*)(CFTypeRef, CFTypeRef)>);
static_assert(std::string_view(kIOPSCurrentCapacityKey) == "Current Capacity");
static_assert(std::string_view(kIOPSIsChargingKey) == "Is Charging");
static_assert(std::string_view(kIOPSTimeToEmptyKey) == "Time to Empty");
static_assert(std::string_view(kIOPSTimeToFullChargeKey) == "Time to Full Charge");

static_assert(same<decltype(&SecItemCopyMatching), int (*)(CFDictionaryRef, CFTypeRef *)>);
static_assert(same<decltype(&SecItemUpdate), int (*)(CFDictionaryRef, CFDictionaryRef)>);
static_assert(errSecSuccess == 0 && errSecItemNotFound == -25300);
