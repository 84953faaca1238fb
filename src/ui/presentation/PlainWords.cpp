#include "ui/presentation/PlainWords.h"

#include <cmath>

namespace swabby {

QString sentence(const QString &words)
{
    return oneLine(words) + QLatin1Char('.');
}

QString wholeNumberText(double value)
{
    if (!std::isfinite(value))
        return QStringLiteral("–");
    return QString::asprintf("%.0f", std::trunc(value) + 0.0);
}

QString durationText(double seconds)
{
    for (const auto &[length, unit] : {std::pair(86'400, "day"), {3'600, "hour"}, {60, "minute"}}) {
        const auto count = static_cast<qint64>(seconds / length);
        if (count >= 1)
            return QStringLiteral("%1 %2%3").arg(count).arg(QLatin1String(unit),
                                                            QLatin1String(count > 1 ? "s" : ""));
    }
    return QStringLiteral("less than a minute");
}

QString hoursAndMinutes(int minutes)
{
    return QStringLiteral("%1h %2m").arg(minutes / 60).arg(minutes % 60);
}

} // namespace swabby
