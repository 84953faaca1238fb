#pragma once

#include "platform/HarmlessText.h"

#include <optional>

namespace swabby {

/// Words of the program that leave out the full stop, with it, and harmless like a name.
QString sentence(const QString &words);

/// The value as a whole number, cut off towards zero; "–" for a value that is no number.
QString wholeNumberText(double value);

/// "2 days", "3 hours", "1 minute" or "less than a minute": the largest of them that it fills.
QString durationText(double seconds);

/// "5h 12m".
QString hoursAndMinutes(int minutes);

} // namespace swabby
