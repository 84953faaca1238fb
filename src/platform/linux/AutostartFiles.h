#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace swabby {

// Definitions of the person's own as they lie on the disk.

/// The whole definition; empty when it cannot be read or is no small file.
QByteArray definitionText(const QString &path);

/// Brings back what was set aside from there as it was, in the place of a copy of Swabby's that hid another
/// one meanwhile, and never over anything else. False when everything stays as it was.
bool putAsideBack(const QString &path);

} // namespace swabby
