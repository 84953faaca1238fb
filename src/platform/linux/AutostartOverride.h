#pragma once

#include <QtCore/QByteArray>

namespace swabby {

// A desktop entry of the person's own takes the place of the system's entry of that name at login; a hidden
// one of them starts nothing.

/// The entry as one that starts nothing, with a note that Swabby made it and what it was then. A text that is
/// no entry gives the shortest one that starts nothing.
QByteArray turnedOffCopy(const QByteArray &entry);

/// Whether Swabby made it of another and it still starts nothing, whatever else was changed since.
bool isTurnedOffCopy(const QByteArray &entry);

/// Whether it is as Swabby made it, so that nothing of anybody's is lost with it.
bool isUntouchedCopy(const QByteArray &entry);

/// The entry as one of Swabby's that those lines start on every desktop, with everything else that somebody
/// wrote in it. A text that is no entry gives a new one.
QByteArray startingAs(const QByteArray &entry, const QByteArray &start);

/// The entry as one that starts again, with everything that was changed in it since.
QByteArray turnedOnAgain(const QByteArray &entry);

} // namespace swabby
