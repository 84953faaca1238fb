#pragma once

#include <QtCore/QString>

#include <cmath>
#include <cstdint>

namespace swabby {

/// The number a sentence shows: truncated toward zero. What no sentence could show (not a number, beyond
/// any real figure) is shown as the nearest that it can.
inline std::int64_t wholeNumber(double value)
{
    constexpr double limit = 1e15;
    if (std::isnan(value))
        return 0;
    return static_cast<std::int64_t>(std::fmin(std::fmax(value, -limit), limit));
}

/// The same as in "42%".
inline QString percentText(double percent)
{
    return QString::number(wholeNumber(percent)) + QLatin1Char('%');
}

} // namespace swabby
