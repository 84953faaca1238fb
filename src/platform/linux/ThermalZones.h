#pragma once

#include "platform/KernelCounters.h"

#include <string>

namespace swabby {

/// The worst state of all zones under a folder like /sys/class/thermal, from the trip points they name:
/// - fair at an active trip (the fans are needed),
/// - serious at a passive trip (the kernel slows the processor down),
/// - critical at a hot trip, or within 5 °C of a critical one (there the machine switches itself off).
/// Zones without trip points or switched off, and readings no working sensor gives, count as nominal.
ThermalState thermalStateOf(const std::string &folder);

} // namespace swabby
