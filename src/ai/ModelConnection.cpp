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

using Promise = std::shared_ptr<QPromise<ModelResponse>>;

/// One request from beginning to end, on the thread that makes it. It has a manager of its own: a shared one
/// lets six through at a time, and keeps connections and credentials.
class Errand final : public QNetworkAccessManager {
public:
    Errand(const ModelRequest &request, ModelConnection::Limits limits, Promise promise)
        : m_limits(limits), m_body(request.body), m_promise(std::move(promise))
    {
        setProxyFactory(new SystemProxies);
        m_reply = post(networkRequest(request), &m_body);
        // What arrives faster than it is read stays on the way.
        m_reply->setReadBufferSize(limits.answerBytes + 1);
        connect(m_reply, &QNetworkReply::requestSent, this, [this] { m_response.wasSent = true; });
        connect(m_reply, &QNetworkReply::readyRead, this, [this] {
            if (!readMore())
                m_reply->abort();
        });
        connect(m_reply, &QNetworkReply::finished, this, [this] {
            answer();
            deleteLater();
        });
        QTimer::singleShot(limits.time, m_reply, &QNetworkReply::abort);
    }

    ~Errand() override
    {
        if (!m_isAnswered)
            finish();
    }

private:
    /// False when the answer is too long.
    bool readMore()
    {
        m_answer += m_reply->read(m_limits.answerBytes + 1 - m_answer.size());
        return m_answer.size() <= m_limits.answerBytes;
    }

    void answer()
    {
        const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        constexpr int firstGood = 200;
        constexpr int lastGood = 299;
        if (m_reply->error() == QNetworkReply::NoError && status >= firstGood && status <= lastGood &&
            readMore())
            m_response.body = m_answer;
        finish();
    }

    void finish()
    {
        m_isAnswered = true;
        m_promise->addResult(m_response);
        m_promise->finish();
    }

    const ModelConnection::Limits m_limits;
    BodyForOnce m_body;
    const Promise m_promise;
    QNetworkReply *m_reply = nullptr;
    ModelResponse m_response;
    QByteArray m_answer;
    bool m_isAnswered = false;
};

} // namespace

/// The thread and what lives on it.
class ModelConnection::Courier {
public:
    explicit Courier(Limits limits) : m_limits(limits)
    {
        m_errands.moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::started, &m_errands, &useUtilityPriority, Qt::DirectConnection);
        m_thread.setObjectName(QStringLiteral("assistant"));
        m_thread.start();
    }

    ~Courier()
    {
        QMetaObject::invokeMethod(
            &m_errands, [this] { qDeleteAll(m_errands.children()); }, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    }

    void post(const ModelRequest &request, const Promise &promise)
    {
        QMetaObject::invokeMethod(&m_errands, [this, request, promise] {
            (new Errand(request, m_limits, promise))->setParent(&m_errands);
        });
    }

private:
    const Limits m_limits;
    QThread m_thread;
    QObject m_errands; ///< parent of those under way
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
