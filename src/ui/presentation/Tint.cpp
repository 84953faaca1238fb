#include "ui/presentation/Tint.h"

namespace swabby {

Tint tintOf(HealthLevel level)
{
    switch (level) {
    case HealthLevel::green:
        return Tint::green;
    case HealthLevel::yellow:
        return Tint::orange;
    case HealthLevel::red:
        return Tint::red;
    }
    return Tint::accent;
}

} // namespace swabby
