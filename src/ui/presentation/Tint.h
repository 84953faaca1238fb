#pragma once

#include "engine/HealthLevel.h"

namespace swabby {

/// What a colour says, before a theme says which colour that is. The order is that of Theme's lists.
enum class Tint { accent, green, orange, red };

inline constexpr int tintCount = 4;

Tint tintOf(HealthLevel level);

} // namespace swabby
