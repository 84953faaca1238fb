#include "platform/posix/FolderLock.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

namespace swabby {

std::optional<FolderLock> FolderLock::lock(const QString &folder)
{
    return take(folder, LOCK_EX);
}

std::optional<FolderLock> FolderLock::tryLock(const QString &folder)
{
    return take(folder, LOCK_EX | LOCK_NB);
}

std::optional<FolderLock> FolderLock::take(const QString &folder, int operation)
{
    Descriptor taken(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    while (::flock(taken.number(), operation) != 0)
        if (errno != EINTR)
            return std::nullopt;
    return FolderLock(std::move(taken));
}

void sweepStrays(const QString &filePath)
{
    const QFileInfo file(filePath);
    QDir folder(file.absolutePath());
    for (const QString &name : folder.entryList({file.fileName() + QStringLiteral(".??????")}, QDir::Files)) {
        const QString ending = name.mid(file.fileName().size() + 1);
        const bool isLetters = std::all_of(ending.begin(), ending.end(), [](QChar letter) {
            return letter.unicode() < 128 && letter.isLetter();
        });
        // The one word of six letters that a person puts behind a file's name is not ours.
        if (isLetters && ending.compare(QLatin1String("backup"), Qt::CaseInsensitive) != 0)
            folder.remove(name);
    }
}

} // namespace swabby
