#pragma once

#include "platform/PowerSupply.h"

#include <string>

namespace swabby {

/// The machine's first battery in a folder like /sys/class/power_supply. Batteries of mice, headphones and
/// the like (scope Device) do not count. Reading is quick and safe from several threads.
class LinuxPowerSupply final : public PowerSupply {
public:
    explicit LinuxPowerSupply(std::string folder);

    bool hasBattery() const { return !battery().empty(); }

    std::optional<PowerSource> firstSource() override;
    BatteryHealth healthAndCycles() override;

private:
    /// The battery's folder, empty when there is none.
    std::string battery() const;

    const std::string m_folder;
};

} // namespace swabby
