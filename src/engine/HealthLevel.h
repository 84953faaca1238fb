#pragma once

namespace swabby {

/// The overall verdict; a worse level compares greater.
enum class HealthLevel { green = 0, yellow = 1, red = 2 };

} // namespace swabby
