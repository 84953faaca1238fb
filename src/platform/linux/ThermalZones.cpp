#include "platform/linux/ThermalZones.h"

#include "platform/linux/KernelFile.h"

#include <algorithm>

namespace swabby {

namespace {

// In thousandths of a degree Celsius, as the kernel gives them.
constexpr std::int64_t criticalMargin = 5'000;
constexpr std::int64_t coldestSensible = -40'000;
constexpr std::int64_t hottestSensible = 150'000;

/// The state that reaching a trip point of this type means.
ThermalState stateAt(std::string_view tripType)
{
    if (tripType == "active")
        return ThermalState::fair;
    if (tripType == "passive")
        return ThermalState::serious;
    if (tripType == "hot" || tripType == "critical")
        return ThermalState::critical;
    return ThermalState::nominal;
}

ThermalState zoneState(const std::string &zone)
{
    const auto temperature = fileNumber(zone + "/temp");
    if (!temperature || *temperature < coldestSensible || *temperature > hottestSensible)
        return ThermalState::nominal;
    if (trimmed(fileText(zone + "/mode")) == "disabled")
        return ThermalState::nominal;

    ThermalState worst = ThermalState::nominal;
    for (const std::string &name : folderEntries(zone)) {
        if (!name.starts_with("trip_point_") || !name.ends_with("_type"))
            continue;
        const std::string point = zone + '/' + name.substr(0, name.size() - std::string_view("type").size());
        const auto trip = fileNumber(point + "temp");
        // Drivers give trips nobody has set as 0 or far below.
        if (!trip || *trip <= 0 || *trip > hottestSensible)
            continue;
        const std::string text = fileText(point + "type");
        const std::string_view type = trimmed(text);
        if (*temperature >= *trip - (type == "critical" ? criticalMargin : 0))
            worst = std::max(worst, stateAt(type));
    }
    return worst;
}

} // namespace

ThermalState thermalStateOf(const std::string &folder)
{
    ThermalState worst = ThermalState::nominal;
    for (const std::string &name : folderEntries(folder)) {
        if (name.starts_with("thermal_zone"))
            worst = std::max(worst, zoneState(folder + '/' + name));
    }
    return worst;
}

} // namespace swabby
