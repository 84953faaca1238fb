#pragma once

#include <QtCore/QString>

namespace swabby {

/// Makes the folder and those above it that are missing. One that is Swabby's own is closed to everybody but
/// its owner, also when it was there before. False when there is none in the end. Blocks for the disk.
bool makeOwnFolder(const QString &path);

} // namespace swabby
