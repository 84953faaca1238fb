#include "ai/ModelConnection.h"

#include "ai/ModelAddresses.h"
#include "ai/network/PostRequest.h"
#include "platform/posix/LateLibrary.h"
#include "platform/posix/ThreadPriority.h"

#include <QtCore/QThread>

namespace swabby {
namespace {

/// Whether a header can hold the key: with a line break in it, it would be several.
bool fitsHeader(const QByteArray &key)
{
    return !key.contains('\r') && !key.contains('\n') && !key.contains('\0');
}

void finishWithout(const ModelPromise &promise)
{
    promise->addResult(ModelResponse());
    promise->finish();
}

} // namespace

/// The thread and what lives on it.
class ModelConnection::Worker {
public:
    explicit Worker(Limits limits) : m_limits(limits)
    {
        m_requests.moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::started, &m_requests, &useUtilityPriority,
                         Qt::DirectConnection);
        m_thread.setObjectName(QStringLiteral("assistant"));
        m_thread.start();
    }

    ~Worker()
    {
        QMetaObject::invokeMethod(
            &m_requests, [this] { qDeleteAll(m_requests.children()); }, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    }

    void post(const ModelRequest &request, const ModelPromise &promise)
    {
        QMetaObject::invokeMethod(&m_requests, [this, request, promise] {
            if (const auto send = lateFunction<PostFunction>(networkLibrary, postFunctionName))
                send(request, m_limits, promise, &m_requests);
            else
                finishWithout(promise);
        });
    }

private:
    const Limits m_limits;
    QThread m_thread;
    QObject m_requests; ///< parent of those under way
};

ModelConnection::ModelConnection(Limits limits) : m_limits(limits) {}

ModelConnection::~ModelConnection() = default;

QFuture<ModelResponse> ModelConnection::post(const ModelRequest &request)
{
    const auto promise = std::make_shared<QPromise<ModelResponse>>();
    promise->start();
    QFuture<ModelResponse> future = promise->future();
    if (!mayBeCalled(request.address) || !fitsHeader(request.key)) {
        finishWithout(promise);
        return future;
    }
    if (!m_worker)
        m_worker = std::make_unique<Worker>(m_limits);
    m_worker->post(request, promise);
    return future;
}

} // namespace swabby
