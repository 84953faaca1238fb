#include "flows/ai/AskFlow.h"

#include "flows/ai/AssistantNotes.h"

namespace swabby {

void AskFlow::ask(const QString &question)
{
    const QString trimmed = question.trimmed();
    if (!trimmed.isEmpty() && !isAsking())
        askTrimmed(trimmed);
}

QCoro::Task<> AskFlow::askTrimmed(QString question)
{
    const StopToken stop = m_run.begin().stop;
    m_cancel = StopSource();
    Q_EMIT changed();
    const Asking asking{m_cancel.token(), Unlocking::mayAsk};
    const auto answer = co_await m_ai.ask(question, m_state.systemContextSummary(), asking);
    if (stop.stopRequested())
        co_return;
    m_explanation = answer.value.explanation;
    m_appToQuit = answer.value.appToQuit.isEmpty() ? std::nullopt : std::optional(answer.value.appToQuit);
    m_note = answer.wasSent ? AssistantNotes::sentForAnswer(answer.host) : QString();
    m_failure = answer.failure;
    m_run.end();
    Q_EMIT changed();
}

QStringList AskFlow::suggestions() const
{
    const QString &computer = m_state.machine().words.computer;
    QStringList questions = {QStringLiteral("Why is my %1 slow right now?").arg(computer)};
    if (m_state.machine().mayHaveBattery)
        questions.append(QStringLiteral("Why is my battery draining fast?"));
    return questions << QStringLiteral("Is it safe to restart my %1?").arg(computer);
}

QString AskFlow::waitingText()
{
    return QStringLiteral("Analyzing system state…");
}

} // namespace swabby
