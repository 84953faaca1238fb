#pragma once

#include "ai/CloudAI.h"
#include "platform/LatestRun.h"
#include "state/AppState.h"

#include <QtCore/QObject>

namespace swabby {

/// A question about the machine in plain words, and its answer. One at a time; nothing is remembered from one
/// to the next, and an answer only ever offers. Main thread.
class AskFlow : public QObject {
    Q_OBJECT

public:
    AskFlow(AppState &state, CloudAI &ai) : m_state(state), m_ai(ai) {}
    ~AskFlow() override { cancel(); }

    /// Asks with a snapshot of this moment. Nothing happens for a blank question or while one is being
    /// answered.
    void ask(const QString &question);
    /// Ends the question under way; it is then answered as cancelled.
    void cancel() { m_cancel.requestStop(); }

    bool isAsking() const { return m_run.isUnderWay(); }
    /// The last answer; none before the first.
    const std::optional<QString> &explanation() const { return m_explanation; }
    /// The application the last answer names, as it was written; none when it names none.
    const std::optional<QString> &appToQuit() const { return m_appToQuit; }
    /// Whether the question left this computer, for beneath the answer; may be empty.
    const QString &note() const { return m_note; }
    /// Why the model did not answer; none when it did.
    const std::optional<ModelFailure> &failure() const { return m_failure; }

    QStringList suggestions() const;
    /// While a question is being answered.
    static QString waitingText();

Q_SIGNALS:
    void changed();

private:
    QCoro::Task<> askTrimmed(QString question);

    AppState &m_state;
    CloudAI &m_ai;
    std::optional<QString> m_explanation;
    std::optional<QString> m_appToQuit;
    QString m_note;
    std::optional<ModelFailure> m_failure;
    LatestRun m_run;
    StopSource m_cancel; ///< of the question under way
};

} // namespace swabby
