#include "engine/TimeText.h"

#include <QtCore/QRegularExpression>

namespace swabby {
namespace {

QString styleToTheMinute(const QLocale &locale)
{
    // This library prints CLDR's B, the part of the day, as a letter; the half of the day stands in for it.
    return locale.timeFormat(QLocale::ShortFormat).replace(QLatin1Char('B'), QLatin1String("AP"));
}

// The short style lacks the seconds, and the long one is wordy and names the time zone.
QString styleToTheSecond(const QLocale &locale)
{
    static const QRegularExpression minutes(QStringLiteral("([.:])(mm?)"));
    QString style = styleToTheMinute(locale);
    if (style.contains(QLatin1Char('s')))
        return style;
    if (style.contains(minutes))
        return style.replace(minutes, QStringLiteral("\\1\\2\\1ss"));
    return locale.timeFormat(QLocale::LongFormat).remove(QLatin1String(" t"));
}

} // namespace

QString timeOfDay(const QDateTime &time, const QLocale &locale)
{
    return locale.toString(time.time(), styleToTheSecond(locale));
}

QString timeOfDayToTheMinute(const QDateTime &time, const QLocale &locale)
{
    return locale.toString(time.time(), styleToTheMinute(locale));
}

QString dayAndTime(const QDateTime &time, const QLocale &locale)
{
    return locale.toString(time.date(), QLocale::ShortFormat) + QLatin1Char(' ') + timeOfDay(time, locale);
}

} // namespace swabby
