#include "ui/qmltypes/ExplainView.h"

#include "flows/startup/StartupFlow.h"
#include "ui/qmltypes/ConfirmationView.h"

namespace swabby {

ExplainView::ExplainView(const UserInterfaceContext &context, ConfirmationView &confirmation, QObject *parent)
    : QObject(parent), m_context(context), m_confirmation(confirmation)
{
}

void ExplainView::open(const ExplainRequest &request)
{
    m_flow = std::make_unique<ExplainFlow>(request, m_context.ai);
    connect(m_flow.get(), &ExplainFlow::changed, this, &ExplainView::changed);
    m_flow->load();
    Q_EMIT changed();
}

void ExplainView::showExplanation(const ExplainRequest &request, const QString &text, const QString &note)
{
    m_flow = std::make_unique<ExplainFlow>(request, m_context.ai);
    m_text = text;
    m_note = note;
    Q_EMIT changed();
}

void ExplainView::cancel()
{
    if (m_flow)
        m_flow->cancel();
}

void ExplainView::loadAgain()
{
    if (m_flow)
        m_flow->load();
}

void ExplainView::act()
{
    if (!m_flow)
        return;
    const ExplainRequest request = m_flow->request();
    close();
    if (const auto *process = std::get_if<ProcessSample>(&request.kind))
        m_confirmation.askToQuit(*process, Quitting::Force::yes);
    else if (const auto *item = std::get_if<LoginItem>(&request.kind); item->canDisableInPlace)
        m_context.startup.disable(*item);
    else
        m_context.startup.openLoginItemSettings();
}

void ExplainView::close()
{
    m_flow.reset();
    m_text.clear();
    m_note.clear();
    Q_EMIT changed();
}

} // namespace swabby
