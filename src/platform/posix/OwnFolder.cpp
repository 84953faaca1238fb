#include "platform/posix/OwnFolder.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <sys/stat.h>

namespace swabby {

bool makeOwnFolder(const QString &path)
{
    if (!QDir().mkpath(path))
        return false;
    // A folder in which others keep theirs is none of Swabby's: only what lies in one of its name is.
    const qsizetype name = (path + QLatin1Char('/')).lastIndexOf(QLatin1String("/Swabby/"));
    for (QString own = path; name >= 0 && own.size() > name;
         own = own.left(own.lastIndexOf(QLatin1Char('/'))))
        ::chmod(QFile::encodeName(own).constData(), S_IRWXU);
    return true;
}

} // namespace swabby
