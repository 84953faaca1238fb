#pragma once

#include "platform/PowerSupply.h"

#include <functional>
#include <string>

namespace swabby {

/// Gives the text of the battery's file of that name; empty when there is none.
using BatteryFile = std::function<std::string(const std::string &name)>;

/// How full the battery is and what it does. Minutes come from the charge left and the present current; none
/// when the battery gives no current.
PowerSource powerSourceFrom(const BatteryFile &file);

/// Health is the full charge over that of the design, rounded and at most 100; a battery that counts no
/// cycles reports 0, which is no value here.
BatteryHealth batteryHealthFrom(const BatteryFile &file);

} // namespace swabby
