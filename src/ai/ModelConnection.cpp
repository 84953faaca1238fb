#include "ai/ModelConnection.h"

#include "ai/ModelAddresses.h"
#include "ai/network/Errand.h"
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

    void post(const ModelRequest &request, const ModelPromise &promise)
    {
        QMetaObject::invokeMethod(&m_errands, [this, request, promise] {
            if (const auto start = lateFunction<ErrandStarter>(networkLibrary, errandStarter))
                start(request, m_limits, promise, &m_errands);
            else
                finishWithout(promise);
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
        finishWithout(promise);
        return future;
    }
    if (!m_courier)
        m_courier = std::make_unique<Courier>(m_limits);
    m_courier->post(request, promise);
    return future;
}

} // namespace swabby
