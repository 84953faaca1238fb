// Asks the model once: a request from standard input, its answer to standard output. A program of its own,
// because what speaks over the network is large, may hang in a look-up that nobody can call off, and swells
// with what a server sends.
#include "ai/network/ModelWire.h"
#include "platform/posix/MemoryPrivacy.h"
#include "platform/posix/OwnLimits.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkProxyFactory>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

using namespace swabby;

namespace {

using Problem = ModelResult::Problem;

/// A header without an end is read byte by byte, so this ends it.
constexpr std::chrono::seconds processorTime(5);
constexpr unsigned long long addressSpace = 1ULL << 30;

/// The system's proxies, but for addresses on this computer.
class SystemProxies final : public QNetworkProxyFactory {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override
    {
        const QString host = query.peerHostName();
        if (host == QLatin1String("localhost") || QHostAddress(host).isLoopback())
            return {QNetworkProxy(QNetworkProxy::NoProxy)};
        return systemProxyForQuery(query);
    }
};

/// A body that is given out once. After a lost connection the library would send a question again by itself,
/// up to four times in all, unless the question cannot be had again.
class BodyForOnce final : public QIODevice {
public:
    explicit BodyForOnce(QByteArray body) : m_body(std::move(body)) { open(ReadOnly | Unbuffered); }

    bool reset() override { return false; }
    qint64 size() const override { return m_body.size(); }

private:
    qint64 readData(char *target, qint64 most) override
    {
        const qint64 count = std::min(most, m_body.size() - m_given);
        std::copy_n(m_body.constData() + m_given, count, target);
        m_given += count;
        return count;
    }
    qint64 writeData(const char * /*source*/, qint64 /*size*/) override { return -1; }

    const QByteArray m_body;
    qint64 m_given = 0;
};

QNetworkRequest networkRequest(const ModelRequest &request)
{
    QNetworkRequest result(request.address);
    // A redirect would carry the key and the question to whomever it names.
    result.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    result.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/json"));
    result.setHeader(QNetworkRequest::UserAgentHeader, QByteArrayLiteral("Swabby/" SWABBY_VERSION));
    // Without one, the library would tell the person's own.
    result.setRawHeader(QByteArrayLiteral("Accept-Language"), QByteArrayLiteral("*"));
    if (!request.key.isEmpty()) {
        result.setRawHeader(QByteArrayLiteral("x-api-key"), request.key);
        result.setRawHeader(QByteArrayLiteral("anthropic-version"), QByteArrayLiteral("2023-06-01"));
    }
    return result;
}

void write(const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

ModelResult resultOf(QNetworkReply &reply, const QByteArray &answer, qint64 mostBytes)
{
    constexpr int firstGood = 200;
    constexpr int lastGood = 299;
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QNetworkReply::NetworkError error = reply.error();
    if (answer.size() > mostBytes || error == QNetworkReply::ProtocolFailure)
        return {.problem = Problem::noHttp, .body = {}};
    const bool isGood = status >= firstGood && status <= lastGood;
    if (status == 0 || (isGood && error != QNetworkReply::NoError))
        return {.problem = Problem::noConnection, .body = {}};
    return {.problem = Problem::none, .status = status, .body = isGood ? answer : QByteArray()};
}

/// Asks, and gives what came of it; an event loop runs until then.
ModelResult ask(const ModelRequest &request)
{
    QNetworkAccessManager manager;
    manager.setProxyFactory(new SystemProxies);
    BodyForOnce body(request.body);
    QNetworkReply *const reply = manager.post(networkRequest(request), &body);
    // What arrives faster than it is read stays on the way.
    reply->setReadBufferSize(request.answerBytes + 1);
    QByteArray answer;
    const auto readMore = [&] { answer += reply->read(request.answerBytes + 1 - answer.size()); };
    QObject::connect(reply, &QNetworkReply::requestSent, [] { write(QByteArray(1, sentMark)); });
    QObject::connect(reply, &QNetworkReply::readyRead, [&] {
        readMore();
        if (answer.size() > request.answerBytes)
            reply->abort();
    });
    QObject::connect(reply, &QNetworkReply::finished, QCoreApplication::instance(), &QCoreApplication::quit,
                     Qt::QueuedConnection);
    QCoreApplication::exec();
    readMore();
    return resultOf(*reply, answer, request.answerBytes);
}

} // namespace

int main(int argc, char *argv[])
{
    keepMemoryPrivate();
    QCoreApplication application(argc, argv);
#ifdef SWABBY_PLUGINS
    // The one that speaks TLS; a folder that is not there is left out.
    QCoreApplication::addLibraryPath(QCoreApplication::applicationDirPath() + QStringLiteral(SWABBY_PLUGINS));
#endif
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return 1;
    const auto request = saidIn<ModelRequest>(input.readAll());
    if (!request)
        return 1;
    limitOwnProcess({.time = request->time, .processorTime = processorTime, .memoryBytes = addressSpace});
    write(bytesOf(ask(*request)));
    // A look-up that still hangs would be waited for.
    std::_Exit(0);
}
