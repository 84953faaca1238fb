#include "platform/machinefolder/EventLog.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

#include <fcntl.h>
#include <unistd.h>

namespace swabby {

void EventLog::write(const QString &kind, const QJsonValue &what) const
{
    const QByteArray line =
        QJsonDocument(QJsonObject{{kind, what}}).toJson(QJsonDocument::Compact).append('\n');
    const int descriptor =
        ::open(QFile::encodeName(m_filePath).constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (descriptor < 0)
        return;
    // One write of a line to a file opened for appending is not torn by another's; a full disk loses it.
    [[maybe_unused]] const ssize_t written =
        ::write(descriptor, line.constData(), static_cast<std::size_t>(line.size()));
    ::close(descriptor);
}

} // namespace swabby
