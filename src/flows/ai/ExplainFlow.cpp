#include "flows/ai/ExplainFlow.h"

#include "flows/ai/AssistantNotes.h"

namespace swabby {

void ExplainFlow::load()
{
    if (!isLoading())
        loadText();
}

QCoro::Task<> ExplainFlow::loadText()
{
    const StopToken stop = m_run.begin().stop;
    Q_EMIT changed();
    const auto answer = co_await m_ai.explain(m_request);
    if (stop.stopRequested())
        co_return;
    m_text = answer.value;
    m_note = AssistantNotes::beneath(answer, AssistantNotes::sentForExplanation());
    m_run.end();
    Q_EMIT changed();
}

QString ExplainFlow::waitingText()
{
    return QStringLiteral("Getting an explanation…");
}

} // namespace swabby
