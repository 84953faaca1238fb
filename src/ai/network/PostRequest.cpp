#include "ai/network/PostRequest.h"

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

/// One request from beginning to end, on the thread that makes it. It has a manager of its own: a shared one
/// lets six through at a time, and keeps connections and credentials.
class PostRequest final : public QNetworkAccessManager {
public:
    PostRequest(const ModelRequest &request, ModelConnection::Limits limits, ModelPromise promise)
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

    ~PostRequest() override
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
    const ModelPromise m_promise;
    QNetworkReply *m_reply = nullptr;
    ModelResponse m_response;
    QByteArray m_answer;
    bool m_isAnswered = false;
};

} // namespace
} // namespace swabby

extern "C" Q_DECL_EXPORT void swabbyPost(const swabby::ModelRequest &request,
                                         const swabby::ModelConnection::Limits &limits,
                                         const swabby::ModelPromise &promise, QObject *parent)
{
    (new swabby::PostRequest(request, limits, promise))->setParent(parent);
}
