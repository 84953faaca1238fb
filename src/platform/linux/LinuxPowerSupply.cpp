#include "platform/linux/LinuxPowerSupply.h"

#include "platform/linux/KernelFile.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace swabby {

namespace {

/// Charge and current of a battery, in µWh and µW or in µAh and µA: only their ratios are used.
struct Charge {
    std::optional<std::int64_t> now;
    std::optional<std::int64_t> full;
    std::optional<std::int64_t> design;
    std::optional<std::int64_t> rate;
};

std::optional<std::int64_t> positive(std::optional<std::int64_t> number)
{
    // Some drivers give the current of a discharging battery as a negative number.
    if (!number || *number == 0)
        return std::nullopt;
    return std::abs(*number);
}

Charge chargeOf(const std::string &battery)
{
    const auto read = [&](const std::string &kind, const char *rate) {
        return Charge{fileNumber(battery + '/' + kind + "_now"),
                      positive(fileNumber(battery + '/' + kind + "_full")),
                      positive(fileNumber(battery + '/' + kind + "_full_design")),
                      positive(fileNumber(battery + '/' + rate))};
    };
    const Charge energy = read("energy", "power_now");
    return energy.now || energy.full ? energy : read("charge", "current_now");
}

std::optional<int> minutes(std::int64_t amount, std::int64_t rate)
{
    // A current near zero makes days of it, which tells nobody anything.
    constexpr double longest = 100 * 60;
    const double time = 60.0 * static_cast<double>(amount) / static_cast<double>(rate);
    if (time < 0 || time > longest)
        return std::nullopt;
    return static_cast<int>(time);
}

} // namespace

LinuxPowerSupply::LinuxPowerSupply(std::string folder) : m_folder(std::move(folder)) {}

std::optional<PowerSource> LinuxPowerSupply::firstSource()
{
    const std::string folder = battery();
    if (folder.empty())
        return std::nullopt;

    PowerSource source;
    const Charge charge = chargeOf(folder);
    if (const auto capacity = fileNumber(folder + "/capacity"))
        source.currentCapacity = static_cast<int>(std::clamp<std::int64_t>(*capacity, 0, 100));
    else if (charge.now && charge.full)
        source.currentCapacity =
            static_cast<int>(std::clamp<std::int64_t>(*charge.now * 100 / *charge.full, 0, 100));

    const std::string text = fileText(folder + "/status");
    const std::string_view status = trimmed(text);
    if (!status.empty() && status != "Unknown")
        source.isCharging = status == "Charging";

    if (charge.now && charge.rate) {
        if (status == "Charging" && charge.full)
            source.timeToFullCharge = minutes(*charge.full - *charge.now, *charge.rate);
        else if (status == "Discharging")
            source.timeToEmpty = minutes(*charge.now, *charge.rate);
    }
    return source;
}

BatteryHealth LinuxPowerSupply::healthAndCycles()
{
    const std::string folder = battery();
    if (folder.empty())
        return {};

    BatteryHealth health;
    const auto cycles = fileNumber(folder + "/cycle_count");
    if (cycles && *cycles > 0 && *cycles < 100'000)
        health.cycles = static_cast<int>(*cycles);
    const Charge charge = chargeOf(folder);
    if (charge.full && charge.design) {
        const double share = 100.0 * static_cast<double>(*charge.full) / static_cast<double>(*charge.design);
        health.healthPercent = static_cast<int>(std::min(std::lround(share), 100L));
    }
    return health;
}

std::string LinuxPowerSupply::battery() const
{
    std::vector<std::string> names = folderEntries(m_folder);
    std::sort(names.begin(), names.end());
    for (const std::string &name : names) {
        std::string folder = m_folder + '/' + name;
        if (trimmed(fileText(folder + "/type")) == "Battery" &&
            trimmed(fileText(folder + "/scope")) != "Device" && fileNumber(folder + "/present") != 0)
            return folder;
    }
    return {};
}

} // namespace swabby
