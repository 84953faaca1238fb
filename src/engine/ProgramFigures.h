#pragma once

#include "platform/MachineWords.h"

#include <cstdint>
#include <optional>

namespace swabby {

// What a program takes of the machine, as that machine says it.

/// A load of one processor or more where that is said in processors: "1.3 cores". No value for any other, of
/// which the percentage is shown.
std::optional<QString> coresText(double cpuPercent, const MachineWords &words);

/// The load behind "is": "using 40% of your Mac's power", "keeping 1.3 of 16 processors busy".
QString powerText(double cpuPercent, const MachineWords &words);

/// Behind the first of several loads: " (100% is one of 16 processors)". Empty where that needs no saying.
QString loadScaleText(const MachineWords &words);

/// Bytes of memory.
QString programMemoryText(std::uint64_t bytes, const MachineWords &words);

} // namespace swabby
