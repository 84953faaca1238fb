#pragma once

#include <QtCore/QString>

#include <optional>

namespace swabby {

/// A name as one harmless line: control characters, line breaks and characters that turn the reading
/// direction around become blanks. Names of programs are written by anybody.
QString oneLine(const QString &name);

/// Words of the program that leave out the full stop, with it, and harmless like a name.
QString sentence(const QString &words);

/// The value as a whole number, cut off towards zero; "–" for a value that is no number.
QString wholeNumberText(double value);

/// "5h 12m".
QString hoursAndMinutes(int minutes);

} // namespace swabby
