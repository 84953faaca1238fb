#pragma once

#include <optional>

namespace swabby {

/// The overall verdict; a worse level compares greater.
enum class HealthLevel { green = 0, yellow = 1, red = 2 };

/// No value for an integer that is no level.
std::optional<HealthLevel> healthLevelFrom(int rawValue);

} // namespace swabby
