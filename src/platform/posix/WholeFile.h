#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace swabby {

/// Who may read a file that is saved anew; one that was there keeps its rights.
enum class FileAudience { everyone, owner };

/// Puts the content in place of the whole file, or leaves what was there: it is written beside it, flushed
/// and synced to the disk, and only then takes its name. Gives why it could not be saved, in the system's
/// words; an empty text when it was. Blocks for the disk.
QString saveWholeFile(const QString &path, const QByteArray &content,
                      FileAudience audience = FileAudience::everyone);

/// Waits until what was written to an open file outlasts a loss of power, as far as the system sees to that.
void keepContentOnDisk(int file);

} // namespace swabby
