#include "app/TrayDigits.h"

#include "ui/presentation/SvgPath.h"

namespace swabby {
namespace {

struct Digit {
    char sign;
    double width;
    const char *path;
};

constexpr Digit digits[] = {
    {'0', 12, "M6 2 A4 4 0 0 1 10 6 V14 A4 4 0 0 1 2 14 V6 A4 4 0 0 1 6 2 Z"},
    {'1', 9, "M2 5.5 L6.5 2 V18"},
    {'2', 12, "M2 6 A4 4 0 0 1 10 6 C10 10 2 13 2 18 H10"},
    {'3', 12, "M2.2 5.2 A4 4 0 1 1 6 9.6 A4.2 4.2 0 1 1 2 14.6"},
    {'4', 12, "M8 18 V2 L2 13 H10.5"},
    {'5', 12, "M9.5 2 H3 L2.4 9 C4 7.6 10 7.4 10 13 A4.2 4.2 0 0 1 2 15.2"},
    {'6', 12, "M9 2.5 C4 4 2 9 2 13.5 A4 4 0 1 0 10 13.5 A4 4 0 1 0 2 13.5"},
    {'7', 12, "M2 2 H10 L5 18"},
    {'8', 12,
     "M6 2 A3.6 3.6 0 0 1 6 9.2 A3.6 3.6 0 0 1 6 2 Z M6 9.2 A4.4 4.4 0 0 1 6 18 A4.4 4.4 0 0 1 6 9.2 Z"},
    {'9', 12, "M3 17.5 C8 16 10 11 10 6.5 A4 4 0 1 0 2 6.5 A4 4 0 1 0 10 6.5"},
    {'%', 15,
     "M12 2.5 L3 17.5 M4 2.4 A2.1 2.1 0 0 1 4 6.6 A2.1 2.1 0 0 1 4 2.4 Z M11 13.4 A2.1 2.1 0 0 1 11 17.6 "
     "A2.1 2.1 0 0 1 11 13.4 Z"},
};

constexpr double gap = 1.6;

} // namespace

QPainterPath trayDigits(const QString &text)
{
    QPainterPath line;
    double x = 0;
    for (const QChar sign : text)
        for (const Digit &digit : digits)
            if (sign == QLatin1Char(digit.sign)) {
                line.addPath(svgPath(QLatin1String(digit.path)).translated(x, 0));
                x += digit.width + gap;
            }
    return line;
}

} // namespace swabby
