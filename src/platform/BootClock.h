#pragma once

#include <cstdint>
#include <optional>

namespace swabby {

/// When the machine and its programs started. Both may run a tool: background work only.
class BootClock {
public:
    virtual ~BootClock() = default;

    /// Seconds since 1970 of the last boot, read once; no value when unknown.
    virtual std::optional<double> bootEpoch() = 0;
    /// Seconds since 1970 of a process's start; no value when it is gone or unknown.
    virtual std::optional<double> startEpoch(std::int32_t pid) = 0;
};

} // namespace swabby
