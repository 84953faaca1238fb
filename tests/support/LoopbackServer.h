#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QMap>
#include <QtCore/QThread>
#include <QtCore/QUrl>
#include <QtNetwork/QSslConfiguration>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace swabby {

/// One request as it came over the wire.
struct HttpRequest {
    QByteArray method;
    QByteArray target;
    QMap<QByteArray, QByteArray> headers; ///< names in lower case
    QByteArray body;

    QJsonObject json() const;
    /// What the person asks, in a request to the model.
    QString prompt() const;
};

/// A server on this computer, on a thread of its own, that keeps what it was sent.
class LoopbackServer {
public:
    /// Answers a whole request; runs on the server's thread.
    using Respond = std::function<void(QTcpSocket &socket, const HttpRequest &request)>;

    explicit LoopbackServer(Respond respond, std::optional<QSslConfiguration> encryption = std::nullopt);
    ~LoopbackServer();

    QUrl url(const QString &path = QStringLiteral("/v1/messages")) const;
    QList<HttpRequest> requests() const;
    int connections() const { return m_connections; }
    /// What came over all connections and could be read, with what came before it of the same request.
    qint64 bytesReceived() const { return m_bytesReceived; }

private:
    void take(QTcpSocket *socket);

    const Respond m_respond;
    QThread m_thread;
    std::unique_ptr<QTcpServer> m_server;
    quint16 m_port = 0;
    bool m_isEncrypted = false;
    std::atomic<int> m_connections = 0;
    std::atomic<qint64> m_bytesReceived = 0;
    mutable std::mutex m_mutex;
    QList<HttpRequest> m_requests;
};

/// A whole answer that ends its connection.
QByteArray httpAnswer(int status, const QByteArray &body, const QByteArray &headers = {});
/// The body of the model's reply with one block of text.
QByteArray modelReply(const QString &text);
/// Sends the same to every request, and hangs up.
LoopbackServer::Respond always(const QByteArray &answer);

} // namespace swabby
