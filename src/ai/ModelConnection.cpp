#include "ai/ModelConnection.h"

#include "ai/ModelAddresses.h"
#include "platform/posix/ThreadPriority.h"

#include <QtCore/QPromise>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkProxyFactory>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>

namespace swabby {
namespace {

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

/// Whether a header can hold the key: with a line break in it, it would be several.
bool fitsHeader(const QByteArray &key)
{
    return !key.contains('\r') && !key.contains('\n') && !key.contains('\0');
}

QNetworkRequest networkRequest(const ModelRequest &request)
{
    QNetworkRequest result(request.address);
    // A redirect would carry the key and the question to whomever it names.
    result.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    // Nothing is remembered from one request to the next.
    result.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    result.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/json"));
    if (!request.key.isEmpty()) {
        result.setRawHeader(QByteArrayLiteral("x-api-key"), request.key);
        result.setRawHeader(QByteArrayLiteral("anthropic-version"), QByteArrayLiteral("2023-06-01"));
    }
    return result;
}

} // namespace

/// The thread and what lives on it.
class ModelConnection::Courier {
public:
    explicit Courier(Limits limits) : m_limits(limits)
    {
        m_context.moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::started, &m_context, &useUtilityPriority, Qt::DirectConnection);
        m_thread.setObjectName(QStringLiteral("assistant"));
        m_thread.start();
    }

    ~Courier()
    {
        // Replies end with their manager, each telling its promise so.
        QMetaObject::invokeMethod(
            &m_context, [this] { m_manager.reset(); }, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    }

    void post(const ModelRequest &request, const std::shared_ptr<QPromise<ModelResponse>> &promise)
    {
        QMetaObject::invokeMethod(&m_context, [this, request, promise] { send(request, promise); });
    }

private:
    void send(const ModelRequest &request, const std::shared_ptr<QPromise<ModelResponse>> &promise)
    {
        if (!m_manager) {
            m_manager = std::make_unique<QNetworkAccessManager>();
            m_manager->setProxyFactory(new SystemProxies);
        }
        QNetworkReply *reply = m_manager->post(networkRequest(request), request.body);
        const auto response = std::make_shared<ModelResponse>();
        const auto body = std::make_shared<QByteArray>();
        const auto answer = [reply, promise, response, body] {
            if (promise->future().isFinished())
                return;
            const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
            constexpr int firstGood = 200;
            constexpr int lastGood = 299;
            if (reply->error() == QNetworkReply::NoError && status >= firstGood && status <= lastGood)
                response->body = *body;
            promise->addResult(*response);
            promise->finish();
        };
        QObject::connect(reply, &QNetworkReply::requestSent, reply, [response] { response->wasSent = true; });
        QObject::connect(reply, &QNetworkReply::readyRead, reply, [this, reply, body] {
            *body += reply->read(m_limits.answerBytes + 1 - body->size());
            if (body->size() > m_limits.answerBytes)
                reply->abort();
        });
        QObject::connect(reply, &QNetworkReply::finished, reply, [reply, answer] {
            answer();
            reply->deleteLater();
        });
        QObject::connect(reply, &QObject::destroyed, [promise, response] {
            if (promise->future().isFinished())
                return;
            promise->addResult(*response);
            promise->finish();
        });
        QTimer::singleShot(m_limits.time, reply, &QNetworkReply::abort);
    }

    const Limits m_limits;
    QThread m_thread;
    QObject m_context; ///< everything runs where this lives
    std::unique_ptr<QNetworkAccessManager> m_manager;
};

ModelConnection::ModelConnection(Limits limits) : m_limits(limits) {}

ModelConnection::~ModelConnection() = default;

QFuture<ModelResponse> ModelConnection::post(const ModelRequest &request)
{
    const auto promise = std::make_shared<QPromise<ModelResponse>>();
    promise->start();
    QFuture<ModelResponse> future = promise->future();
    if (!mayBeCalled(request.address) || !fitsHeader(request.key)) {
        promise->addResult(ModelResponse());
        promise->finish();
        return future;
    }
    if (!m_courier)
        m_courier = std::make_unique<Courier>(m_limits);
    m_courier->post(request, promise);
    return future;
}

} // namespace swabby
