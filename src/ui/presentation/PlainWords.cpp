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

QString hoursAndMinutes(int minutes)
{
    return QStringLiteral("%1h %2m").arg(minutes / 60).arg(minutes % 60);
}

} // namespace swabby
