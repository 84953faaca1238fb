#include "state/MenuBarTitle.h"

#include <algorithm>
#include <cmath>

namespace swabby {

MenuBarTitle menuBarTitle(double cpuUsagePercent, HealthLevel health)
{
    constexpr double redFrom = 70;
    constexpr double yellowFrom = 30;
    MenuBarTitle title;
    title.text = QString::number(std::lround(std::clamp(cpuUsagePercent, 0.0, 100.0))) + QLatin1Char('%');
    if (health == HealthLevel::red || cpuUsagePercent >= redFrom)
        title.color = TitleColor::red;
    else if (health == HealthLevel::yellow || cpuUsagePercent >= yellowFrom)
        title.color = TitleColor::yellow;
    return title;
}

} // namespace swabby
