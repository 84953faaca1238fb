#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QLocale>

namespace swabby {

/// A time of day to the second, in the standard style of that locale: "9:41:07 AM".
QString timeOfDay(const QDateTime &time, const QLocale &locale);

/// The same without the seconds: "9:41 AM".
QString timeOfDayToTheMinute(const QDateTime &time, const QLocale &locale);

/// The day before the time of day: "3/4/26 9:41:07 AM".
QString dayAndTime(const QDateTime &time, const QLocale &locale);

} // namespace swabby
