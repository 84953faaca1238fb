#pragma once

#include <QtCore/QString>

namespace swabby {

/// Renames a file within its folder in one step, never over something that has the new name. False when
/// nothing was renamed.
bool renameWithoutReplacing(const QString &from, const QString &to);

} // namespace swabby
