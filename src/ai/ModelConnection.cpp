#include "ai/ModelConnection.h"

#include "platform/posix/LateLibrary.h"
#include "platform/posix/PosixShell.h"
#include "settings/CallableAddress.h"

namespace swabby {
namespace {

constexpr int requestsAtOnce = 32;

/// Whether a header can hold the key: with a line break in it, it would be several.
bool fitsHeader(const QByteArray &key)
{
    return !key.contains('\r') && !key.contains('\n') && !key.contains('\0');
}

ModelResponse responseFrom(const QByteArray &said)
{
    ModelResponse response = {.body = std::nullopt, .wasSent = said.startsWith(sentMark)};
    const auto result = saidIn<ModelResult>(said.mid(response.wasSent ? 1 : 0));
    // Nothing is there when the time was up.
    if (!result || result->problem == ModelResult::Problem::noConnection)
        response.failure = ModelFailure::offline;
    else if (result->problem == ModelResult::Problem::noHttp)
        response.failure = ModelFailure::unreadable;
    else
        response.failure = failureOfStatus(result->status);
    if (!response.failure)
        response.body = result->body;
    return response;
}

ModelResponse exchange(const ModelRequest &request, const StopToken &own, const StopToken &callers)
{
    const std::string program = (ownFolder() / networkProgram).string();
    ModelResponse response = responseFrom(QByteArray::fromStdString(
        PosixShell(own).converse(program, bytesOf(request).toStdString(), callers)));
    if (own.stopRequested() || callers.stopRequested())
        response = {.body = std::nullopt, .wasSent = response.wasSent, .failure = ModelFailure::cancelled};
    return response;
}

} // namespace

ModelConnection::ModelConnection() : m_work(requestsAtOnce, Urgency::isWaitedFor) {}

ModelConnection::~ModelConnection()
{
    m_stop.requestStop();
}

QFuture<ModelResponse> ModelConnection::post(const ModelRequest &request, const StopToken &stop)
{
    return m_work.ask([request, own = m_stop.token(), stop]() -> ModelResponse {
        if (!mayBeCalled(request.address))
            return {.body = std::nullopt, .failure = ModelFailure::offline};
        if (!fitsHeader(request.key))
            return {.body = std::nullopt, .failure = ModelFailure::keyRefused};
        if (wasReplaced())
            return {.body = std::nullopt, .failure = ModelFailure::replaced};
        return exchange(request, own, stop);
    });
}

} // namespace swabby
