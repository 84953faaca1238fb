#include "engine/HealthLevel.h"

namespace swabby {

std::optional<HealthLevel> healthLevelFrom(int rawValue)
{
    if (rawValue < static_cast<int>(HealthLevel::green) || rawValue > static_cast<int>(HealthLevel::red))
        return std::nullopt;
    return static_cast<HealthLevel>(rawValue);
}

} // namespace swabby
