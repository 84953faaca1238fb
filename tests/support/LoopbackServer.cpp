#include "support/LoopbackServer.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtNetwork/QSslServer>

namespace swabby {
namespace {

/// The request at the start of the bytes; no value until it is whole.
std::optional<HttpRequest> requestIn(const QByteArray &bytes)
{
    const qsizetype headEnd = bytes.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return std::nullopt;
    HttpRequest request;
    QList<QByteArray> lines = bytes.first(headEnd).split('\n');
    const QList<QByteArray> words = lines.takeFirst().split(' ');
    request.method = words.value(0);
    request.target = words.value(1);
    for (const QByteArray &line : std::as_const(lines)) {
        const qsizetype colon = line.indexOf(':');
        request.headers[line.first(colon).toLower()] = line.mid(colon + 1).trimmed();
    }
    const qsizetype size = request.headers.value("content-length").toLongLong();
    request.body = bytes.mid(headEnd + 4, size);
    return request.body.size() == size ? std::optional(request) : std::nullopt;
}

} // namespace

QJsonObject HttpRequest::json() const
{
    return QJsonDocument::fromJson(body).object();
}

QString HttpRequest::prompt() const
{
    return json()[u"messages"_qs][0][u"content"_qs].toString();
}

LoopbackServer::LoopbackServer(Respond respond, std::optional<QSslConfiguration> encryption)
    : m_respond(std::move(respond)), m_isEncrypted(encryption.has_value())
{
    if (encryption) {
        auto server = std::make_unique<QSslServer>();
        server->setSslConfiguration(*encryption);
        m_server = std::move(server);
    } else {
        m_server = std::make_unique<QTcpServer>();
    }
    m_server->moveToThread(&m_thread);
    QObject::connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, m_server.get(), [this] {
        while (QTcpSocket *socket = m_server->nextPendingConnection())
            take(socket);
    });
    m_thread.start();
    QMetaObject::invokeMethod(
        m_server.get(),
        [this] {
            if (!m_server->listen(QHostAddress::LocalHost))
                qFatal("cannot listen on this computer");
            m_port = m_server->serverPort();
        },
        Qt::BlockingQueuedConnection);
}

LoopbackServer::~LoopbackServer()
{
    QMetaObject::invokeMethod(
        m_server.get(), [this] { m_server.reset(); }, Qt::BlockingQueuedConnection);
    m_thread.quit();
    m_thread.wait();
}

QUrl LoopbackServer::url(const QString &path) const
{
    return QUrl(
        u"%1://127.0.0.1:%2%3"_qs.arg(m_isEncrypted ? u"https"_qs : u"http"_qs).arg(m_port).arg(path));
}

QList<HttpRequest> LoopbackServer::requests() const
{
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

void LoopbackServer::take(QTcpSocket *socket)
{
    ++m_connections;
    const auto received = std::make_shared<QByteArray>();
    QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, received] {
        *received += socket->readAll();
        m_bytesReceived += received->size();
        const auto request = requestIn(*received);
        if (!request)
            return;
        received->clear();
        {
            const std::lock_guard lock(m_mutex);
            m_requests.append(*request);
        }
        m_respond(*socket, *request);
    });
    QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
}

QByteArray httpAnswer(int status, const QByteArray &body, const QByteArray &headers)
{
    return "HTTP/1.1 " + QByteArray::number(status) +
           " Words\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\nConnection: close\r\n" +
           headers + "\r\n" + body;
}

QByteArray modelReply(const QString &text)
{
    const QJsonObject block = {{u"type"_qs, u"text"_qs}, {u"text"_qs, text}};
    return QJsonDocument(QJsonObject{{u"id"_qs, u"msg_1"_qs}, {u"content"_qs, QJsonArray{block}}}).toJson();
}

LoopbackServer::Respond always(const QByteArray &answer)
{
    return [answer](QTcpSocket &socket, const HttpRequest &) {
        socket.write(answer);
        socket.disconnectFromHost();
    };
}

} // namespace swabby
