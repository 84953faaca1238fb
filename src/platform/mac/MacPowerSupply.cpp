#include "platform/mac/MacPowerSupply.h"

#include "platform/mac/Owned.h"
#include "platform/mactools/HardwareReport.h"

#include <IOKit/ps/IOPSKeys.h>
#include <IOKit/ps/IOPowerSources.h>

#include <cstdint>

namespace swabby {
namespace {

std::optional<int> number(CFDictionaryRef source, CFStringRef key)
{
    const CFTypeRef found = CFDictionaryGetValue(source, key);
    std::int32_t value = 0;
    if (found == nullptr || CFGetTypeID(found) != CFNumberGetTypeID() ||
        !CFNumberGetValue(static_cast<CFNumberRef>(found), kCFNumberSInt32Type, &value))
        return std::nullopt;
    return value;
}

std::optional<bool> truth(CFDictionaryRef source, CFStringRef key)
{
    const CFTypeRef found = CFDictionaryGetValue(source, key);
    if (found == nullptr || CFGetTypeID(found) != CFBooleanGetTypeID())
        return std::nullopt;
    return CFBooleanGetValue(static_cast<CFBooleanRef>(found)) != 0;
}

} // namespace

std::optional<PowerSource> MacPowerSupply::firstSource()
{
    const Owned<CFTypeRef> all(IOPSCopyPowerSourcesInfo());
    if (all == nullptr)
        return std::nullopt;
    const Owned<CFArrayRef> list(IOPSCopyPowerSourcesList(all.get()));
    if (list == nullptr || CFArrayGetCount(list.get()) == 0)
        return std::nullopt;
    const CFDictionaryRef first =
        IOPSGetPowerSourceDescription(all.get(), CFArrayGetValueAtIndex(list.get(), 0));
    if (first == nullptr)
        return std::nullopt;
    return PowerSource{.currentCapacity = number(first, CFSTR(kIOPSCurrentCapacityKey)),
                       .isCharging = truth(first, CFSTR(kIOPSIsChargingKey)),
                       .timeToEmpty = number(first, CFSTR(kIOPSTimeToEmptyKey)),
                       .timeToFullCharge = number(first, CFSTR(kIOPSTimeToFullChargeKey))};
}

BatteryHealth MacPowerSupply::healthAndCycles()
{
    return readHardwareReport(m_shell);
}

} // namespace swabby
