#pragma once

#include "engine/HealthLevel.h"

#include <QtCore/QString>

namespace swabby {

enum class TitleColor { green, yellow, red };

/// What the menu-bar item says: the load rounded to a whole percent, in a colour that goes by the exact
/// load and the health.
struct MenuBarTitle {
    QString text;
    TitleColor color = TitleColor::green;

    bool operator==(const MenuBarTitle &) const = default;
};

MenuBarTitle menuBarTitle(double cpuUsagePercent, HealthLevel health);

} // namespace swabby
