#pragma once

#include "ai/ModelFailure.h"
#include "ai/network/ModelWire.h"
#include "platform/BackgroundWork.h"
#include "platform/StopToken.h"

#include <QtCore/QFuture>

#include <optional>

namespace swabby {

/// What came of one question.
struct ModelResponse {
    std::optional<QByteArray> body; ///< of an answer with a good status; none for everything else
    bool wasSent = false;           ///< whether the question left this computer
    std::optional<ModelFailure> failure = std::nullopt;
};

/// The way to the model: one POST for each request, no redirect, no retry, no cookie, no cache. Each is made
/// by a process of its own, which ends in time whatever the network does.
class ModelConnection {
public:
    ModelConnection();
    /// Ends what is under way.
    ~ModelConnection();

    /// Sends the request and returns at once. The future always finishes: when the request is stopped or this
    /// goes away, without an answer.
    QFuture<ModelResponse> post(const ModelRequest &request, const StopToken &stop = {});

private:
    StopSource m_stop;
    BackgroundWork m_work;
};

} // namespace swabby
