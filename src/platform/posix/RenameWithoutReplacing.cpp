#include "platform/posix/RenameWithoutReplacing.h"

#include <QtCore/QFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace swabby {

bool renameWithoutReplacing(const QString &from, const QString &to)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (renameWithoutReplacing(AT_FDCWD, source.constData(), AT_FDCWD, target.constData()))
        return true;
    // File systems that do not know the flag can still refuse a taken name in one step, by a second name.
    return errno == EINVAL && ::link(source.constData(), target.constData()) == 0 &&
           ::unlink(source.constData()) == 0;
}

} // namespace swabby
