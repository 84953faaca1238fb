#pragma once

#include <optional>

namespace swabby {

/// The first power source of the machine, as its description names it; each fact may be missing.
struct PowerSource {
    std::optional<int> currentCapacity; ///< percent
    std::optional<bool> isCharging;
    std::optional<int> timeToEmpty;      ///< minutes; below 1 while still being estimated
    std::optional<int> timeToFullCharge; ///< minutes; below 1 while still being estimated
};

struct BatteryHealth {
    std::optional<int> cycles;
    std::optional<int> healthPercent; ///< of the design capacity
};

class PowerSupply {
public:
    virtual ~PowerSupply() = default;

    /// No value on a machine without a battery. Does not block.
    virtual std::optional<PowerSource> firstSource() = 0;
    /// Slow: may take seconds.
    virtual BatteryHealth healthAndCycles() = 0;
};

} // namespace swabby
