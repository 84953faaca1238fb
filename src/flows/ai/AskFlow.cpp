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
    Q_EMIT changed();
    const auto answer = co_await m_ai.ask(question, m_state.systemContextSummary());
    if (stop.stopRequested())
        co_return;
    m_explanation = answer.value.explanation;
    m_appToQuit = answer.value.appToQuit.isEmpty() ? std::nullopt : std::optional(answer.value.appToQuit);
    m_note = AssistantNotes::beneath(answer, AssistantNotes::sentForAnswer());
    m_run.end();
    Q_EMIT changed();
}

QStringList AskFlow::suggestions()
{
    return {QStringLiteral("Why is my Mac slow right now?"),
            QStringLiteral("Why is my battery draining fast?"),
            QStringLiteral("Is it safe to restart my Mac?")};
}

QString AskFlow::waitingText()
{
    return QStringLiteral("Analyzing system state…");
}

} // namespace swabby
