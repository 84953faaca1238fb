#pragma once

#include "platform/PowerSupply.h"
#include "platform/Shell.h"

#include <string_view>

namespace swabby {

/// Cycles and maximum capacity from the text of `system_profiler SPPowerDataType`.
BatteryHealth parseHardwareReport(std::string_view text);

/// Runs the report, which takes seconds. Nothing known when it gave no text.
BatteryHealth readHardwareReport(Shell &shell);

} // namespace swabby
