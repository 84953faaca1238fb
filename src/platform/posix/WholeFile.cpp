#include "platform/posix/WholeFile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include <cerrno>
#include <system_error>
#include <unistd.h>

namespace swabby {
namespace {

QString textOfError(int error)
{
    return QString::fromStdString(std::generic_category().message(error));
}

/// A disk that cannot be synced, such as a socket of a cloud's file system, is not asked to be.
bool isOnDisk(int descriptor)
{
    return ::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
}

} // namespace

QString saveWholeFile(const QString &path, const QByteArray &content, FileAudience audience)
{
    // A pipe or a device that somebody put there is not replaced by a file.
    if (const QFileInfo there(path); there.exists() && !there.isFile())
        return QStringLiteral("%1 is no regular file").arg(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    if (audience == FileAudience::owner && !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
        return file.errorString();
    // What is only in the buffer would be lost without a word: committing renames whether it was written or
    // not.
    if (file.write(content) != content.size() || !file.flush())
        return file.errorString();
    if (!isOnDisk(file.handle()))
        return textOfError(errno);
    return file.commit() ? QString() : file.errorString();
}

} // namespace swabby
