#include "flows/ai/ExplainFlow.h"

#include "flows/ai/AssistantNotes.h"

#include <QtCore/QPointer>

namespace swabby {

void ExplainFlow::load()
{
    if (!m_isLoading)
        loadText();
}

QCoro::Task<> ExplainFlow::loadText()
{
    const QPointer self(this);
    m_isLoading = true;
    Q_EMIT changed();
    const auto answer = co_await m_ai.explain(m_request);
    if (!self)
        co_return;
    m_text = answer.value;
    m_note = AssistantNotes::beneath(answer, AssistantNotes::sentForExplanation());
    m_isLoading = false;
    Q_EMIT changed();
}

QString ExplainFlow::waitingText()
{
    return QStringLiteral("Getting an explanation…");
}

} // namespace swabby
