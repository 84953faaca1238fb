#include "app/SingleInstance.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>
#include <QtCore/QThread>
#include <QtNetwork/QLocalSocket>

namespace swabby {
namespace {

constexpr int patienceMilliseconds = 2'000;
constexpr int longestRequest = 64;
constexpr auto taken = "ok\n";

QByteArray written(const StartRequest &request)
{
    if (!request.wantsWindow)
        return "stay\n";
    return "show " + (request.section ? sectionName(*request.section).toLatin1() : QByteArray()) + '\n';
}

std::optional<StartRequest> read(const QByteArray &line)
{
    if (line == "stay\n")
        return StartRequest{false, std::nullopt};
    if (!line.startsWith("show "))
        return std::nullopt;
    return StartRequest{true, sectionFrom(QString::fromLatin1(line.mid(5).trimmed()))};
}

} // namespace

SingleInstance::SingleInstance(const QString &path) : m_path(path), m_lock(path + QStringLiteral(".lock"))
{
    // A lock counts for as long as its holder lives, however long that is.
    m_lock.setStaleLockTime(0);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &SingleInstance::answer);
}

SingleInstance::Standing SingleInstance::claim(const StartRequest &request)
{
    const QDeadlineTimer deadline(patienceMilliseconds);
    do {
        if (m_lock.tryLock(0)) {
            // What a Swabby that was cut off has left behind.
            QLocalServer::removeServer(m_path);
            if (!m_server.listen(m_path))
                qWarning("%s", qPrintable(m_server.errorString()));
            return Standing::first;
        }
        // Without a place for a lock there is no telling; better two than none.
        if (m_lock.error() != QLockFile::LockFailedError)
            return Standing::first;
        if (handOver(request))
            return Standing::handedOver;
        // The first one may be about to listen, or about to end.
        QThread::msleep(20);
    } while (!deadline.hasExpired());
    return Standing::unanswered;
}

bool SingleInstance::handOver(const StartRequest &request) const
{
    QLocalSocket socket;
    socket.connectToServer(m_path);
    if (!socket.waitForConnected(patienceMilliseconds))
        return false;
    socket.write(written(request));
    return socket.waitForBytesWritten(patienceMilliseconds) &&
           socket.waitForReadyRead(patienceMilliseconds) && socket.readAll() == taken;
}

void SingleInstance::answer()
{
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        socket->setReadBufferSize(longestRequest);
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        const auto readRequest = [this, socket] {
            if (!socket->canReadLine()) {
                if (socket->bytesAvailable() >= longestRequest)
                    socket->abort();
                return;
            }
            const auto request = read(socket->readLine(longestRequest));
            if (request)
                socket->write(taken);
            socket->disconnectFromServer();
            if (request)
                Q_EMIT asked(*request);
        };
        connect(socket, &QLocalSocket::readyRead, this, readRequest);
        readRequest();
    }
}

QString instancePath(const std::optional<QString> &machineFolder)
{
    // A name of fixed length: a socket's path may not be long.
    const QString machine = machineFolder ? QFileInfo(*machineFolder).canonicalFilePath() : QString();
    const QByteArray name =
        QCryptographicHash::hash(machine.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + QStringLiteral("/swabby-") +
           QString::fromLatin1(name);
}

} // namespace swabby
