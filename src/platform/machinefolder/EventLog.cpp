#include "platform/machinefolder/EventLog.h"

#include "platform/machinefolder/OwnFiles.h"
#include "platform/posix/Descriptor.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

#include <fcntl.h>
#include <unistd.h>

namespace swabby {

void EventLog::write(const QString &kind, const QJsonValue &what) const
{
    const QByteArray line =
        QJsonDocument(QJsonObject{{kind, what}}).toJson(QJsonDocument::Compact).append('\n');
    if (!isOwnFile(m_filePath))
        return;
    const Descriptor file(::open(QFile::encodeName(m_filePath).constData(),
                                 O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0644));
    // One write of a line to a file opened for appending is not torn by another's; a full disk loses it.
    [[maybe_unused]] const ssize_t written =
        ::write(file.number(), line.constData(), static_cast<std::size_t>(line.size()));
}

} // namespace swabby
