#pragma once

#include "ai/CloudAI.h"
#include "platform/LatestRun.h"

#include <QtCore/QObject>

namespace swabby {

/// "What is this?" for one program or startup item, as long as its card is open. Main thread.
class ExplainFlow : public QObject {
    Q_OBJECT

public:
    ExplainFlow(ExplainRequest request, CloudAI &ai) : m_request(std::move(request)), m_ai(ai) {}
    ~ExplainFlow() override { cancel(); }

    /// Asks for the explanation.
    void load();
    /// Ends that; the explanation is then one that was cancelled.
    void cancel() { m_cancel.requestStop(); }

    const ExplainRequest &request() const { return m_request; }
    bool isLoading() const { return m_run.isUnderWay(); }
    /// The explanation; none before it has arrived.
    const std::optional<QString> &text() const { return m_text; }
    /// Whether the question left this computer, for beneath it; may be empty.
    const QString &note() const { return m_note; }
    /// Why the model did not answer; none when it did.
    const std::optional<ModelFailure> &failure() const { return m_failure; }

    /// While it has not arrived.
    static QString waitingText();

Q_SIGNALS:
    void changed();

private:
    QCoro::Task<> loadText();

    const ExplainRequest m_request;
    CloudAI &m_ai;
    std::optional<QString> m_text;
    QString m_note;
    std::optional<ModelFailure> m_failure;
    LatestRun m_run;
    StopSource m_cancel; ///< of the question under way
};

} // namespace swabby
