#include "platform/linux/AutostartFiles.h"

#include "platform/StartupControl.h"
#include "platform/linux/AutostartOverride.h"
#include "platform/posix/RenameWithoutReplacing.h"
#include "platform/posix/SmallFile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace swabby {
namespace {

/// What a full disk can have left of a copy; it says nothing of its own.
bool isEmptyFile(const QString &path)
{
    const QFileInfo file(path);
    return file.isFile() && file.size() == 0;
}

} // namespace

QByteArray definitionText(const QString &path)
{
    constexpr std::int64_t most = 1024 * 1024;
    return smallFile(QFile::encodeName(path).toStdString(), most);
}

bool putAsideBack(const QString &path)
{
    const bool isOurs = isUntouchedCopy(definitionText(path)) || isEmptyFile(path);
    if (isOurs && (!QFileInfo::exists(asideName(path)) || !QFile::remove(path)))
        return false;
    return renameWithoutReplacing(asideName(path), path);
}

} // namespace swabby
