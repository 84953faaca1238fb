#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QFuture>
#include <QtCore/QUrl>

#include <chrono>
#include <memory>
#include <optional>

namespace swabby {

/// One question to the model as it goes over the wire.
struct ModelRequest {
    QUrl address;
    QByteArray key; ///< empty: none is sent
    QByteArray body;
};

/// What came of it.
struct ModelResponse {
    std::optional<QByteArray> body; ///< of an answer with a good status; none for everything else
    bool wasSent = false;           ///< whether the question left this computer
};

/// The way to the model: one POST for each request, no redirect, no retry, no cookie, no cache. Works on a
/// thread of its own that begins with the first request, so that neither the encryption nor a proxy's name is
/// ever waited for by whoever asks.
class ModelConnection {
public:
    struct Limits {
        std::chrono::milliseconds time{60'000}; ///< of a whole request, however steadily it drips
        qint64 answerBytes = 1'000'000;         ///< of an answer; a longer one counts as none
    };

    explicit ModelConnection(Limits limits);
    ~ModelConnection();

    /// Sends the request and returns at once. The future always finishes, when this goes away as an empty
    /// answer.
    QFuture<ModelResponse> post(const ModelRequest &request);

private:
    class Worker;

    const Limits m_limits;
    std::unique_ptr<Worker> m_worker;
};

} // namespace swabby
