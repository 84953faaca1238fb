#include "platform/linux/BatteryFiles.h"

#include "platform/TextScan.h"

#include <algorithm>
#include <cmath>

namespace swabby {

namespace {

/// Charge and current of a battery, in µWh and µW or in µAh and µA: only their ratios are used.
struct Charge {
    std::optional<double> now;
    std::optional<double> full;
    std::optional<double> design;
    std::optional<double> rate;
};

/// A driver may give any whole number.
std::optional<double> numberIn(const BatteryFile &file, const std::string &name)
{
    const std::string text = file(name);
    const auto number = integerOf<std::int64_t>(trimmed(text));
    return number ? std::optional(static_cast<double>(*number)) : std::nullopt;
}

std::optional<double> positive(std::optional<double> number)
{
    // Some drivers give the current of a discharging battery as a negative number.
    if (!number || *number == 0)
        return std::nullopt;
    return std::abs(*number);
}

Charge chargeOf(const BatteryFile &file)
{
    const auto read = [&](const std::string &kind, const char *rate) {
        return Charge{numberIn(file, kind + "_now"), positive(numberIn(file, kind + "_full")),
                      positive(numberIn(file, kind + "_full_design")), positive(numberIn(file, rate))};
    };
    const Charge energy = read("energy", "power_now");
    return energy.now || energy.full ? energy : read("charge", "current_now");
}

std::optional<int> minutes(double amount, double rate)
{
    // A current near zero makes days of it, which tells nobody anything.
    constexpr double longest = 100 * 60;
    const double time = 60.0 * amount / rate;
    if (time < 0 || time > longest)
        return std::nullopt;
    return static_cast<int>(time);
}

} // namespace

PowerSource powerSourceFrom(const BatteryFile &file)
{
    PowerSource source;
    const Charge charge = chargeOf(file);
    if (const auto capacity = numberIn(file, "capacity"))
        source.currentCapacity = static_cast<int>(std::clamp(*capacity, 0.0, 100.0));
    else if (charge.now && charge.full)
        source.currentCapacity = static_cast<int>(std::clamp(*charge.now * 100 / *charge.full, 0.0, 100.0));

    const std::string text = file("status");
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

BatteryHealth batteryHealthFrom(const BatteryFile &file)
{
    constexpr double mostCycles = 100'000;
    BatteryHealth health;
    const auto cycles = numberIn(file, "cycle_count");
    if (cycles && *cycles > 0 && *cycles < mostCycles)
        health.cycles = static_cast<int>(*cycles);
    const Charge charge = chargeOf(file);
    if (charge.full && charge.design)
        health.healthPercent =
            static_cast<int>(std::lround(std::min(100.0 * *charge.full / *charge.design, 100.0)));
    return health;
}

} // namespace swabby
