#pragma once

#include <QtCore/QString>

namespace swabby {

/// Renames a file within its folder in one step, never over something that has the new name. False when
/// nothing was renamed.
bool renameWithoutReplacing(const QString &from, const QString &to);

/// The same of names in open folders. False with EINVAL in errno where the disk knows no such way.
bool renameWithoutReplacing(int fromFolder, const char *from, int toFolder, const char *to);

} // namespace swabby
