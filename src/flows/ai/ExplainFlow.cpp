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
    m_cancel = StopSource();
    Q_EMIT changed();
    const Asking asking{m_cancel.token(), Unlocking::mayAsk};
    const auto answer = co_await m_ai.explain(m_request, asking);
    if (stop.stopRequested())
        co_return;
    m_text = answer.value;
    m_note = answer.wasSent ? AssistantNotes::sentForExplanation(answer.host) : QString();
    m_failure = answer.failure;
    m_run.end();
    Q_EMIT changed();
}

QString ExplainFlow::waitingText()
{
    return QStringLiteral("Getting an explanation…");
}

} // namespace swabby
