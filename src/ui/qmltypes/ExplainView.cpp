#include "ui/qmltypes/ExplainView.h"

#include "engine/ByteCount.h"
#include "flows/startup/StartupFlow.h"
#include "ui/presentation/PlainWords.h"
#include "ui/qmltypes/ConfirmationView.h"

namespace swabby {

ExplainView::ExplainView(const UserInterfaceContext &context, ConfirmationView &confirmation, QObject *parent)
    : QObject(parent), m_context(context), m_confirmation(confirmation)
{
}

void ExplainView::open(const ExplainRequest &request)
{
    if (m_context.ai == nullptr)
        return;
    m_flow = std::make_unique<ExplainFlow>(request, *m_context.ai);
    connect(m_flow.get(), &ExplainFlow::changed, this, &ExplainView::changed);
    m_flow->load();
    Q_EMIT changed();
}

void ExplainView::showExplanation(const ExplainRequest &request, const QString &text, const QString &note)
{
    if (m_context.ai == nullptr)
        return;
    m_flow = std::make_unique<ExplainFlow>(request, *m_context.ai);
    m_text = text;
    m_note = note;
    Q_EMIT changed();
}

const ProcessSample *ExplainView::process() const
{
    return m_flow ? std::get_if<ProcessSample>(&m_flow->request().kind) : nullptr;
}

const LoginItem *ExplainView::loginItem() const
{
    return m_flow ? std::get_if<LoginItem>(&m_flow->request().kind) : nullptr;
}

QString ExplainView::name() const
{
    if (const ProcessSample *shown = process())
        return oneLine(shown->name);
    const LoginItem *item = loginItem();
    return item ? oneLine(item->label) : QString();
}

ProgramTile ExplainView::tile() const
{
    if (const ProcessSample *shown = process())
        return tileOf(*shown);
    const LoginItem *item = loginItem();
    return item ? tileOf(*item) : ProgramTile();
}

QString ExplainView::text() const
{
    return m_flow ? m_flow->text().value_or(m_text) : QString();
}

QString ExplainView::recommendation() const
{
    return m_flow ? recommendationLabel(swabby::recommendation(m_flow->request())) : QString();
}

int ExplainView::recommendationTint() const
{
    return m_flow ? static_cast<int>(tintOf(swabby::recommendation(m_flow->request()))) : 0;
}

QString ExplainView::trust() const
{
    const ProcessSample *shown = process();
    return shown ? QStringLiteral("Trust ") + QString::number(shown->trustRatio()) : QString();
}

QString ExplainView::figures() const
{
    const ProcessSample *shown = process();
    return shown ? wholeNumberText(shown->cpuPercent) + QStringLiteral("% · ") +
                       fileByteCount(static_cast<std::int64_t>(shown->rssBytes))
                 : QString();
}

QString ExplainView::actionLabel() const
{
    if (process())
        return QStringLiteral("Force Quit");
    const LoginItem *item = loginItem();
    if (!item)
        return {};
    return item->canDisableInPlace ? QStringLiteral("Disable")
                                   : QStringLiteral("Open Startup Items in System Settings");
}

QString ExplainView::actionHint() const
{
    return process() ? QStringLiteral("This shuts it down immediately without saving state. Use only if a "
                                      "normal quit didn't work.")
                     : QString();
}

void ExplainView::act()
{
    if (const ProcessSample *shown = process()) {
        const ProcessSample toQuit = *shown;
        close();
        m_confirmation.askToQuit(toQuit, Quitting::Force::yes);
        return;
    }
    const LoginItem *item = loginItem();
    if (!item || m_context.startup == nullptr)
        return;
    if (item->canDisableInPlace)
        m_context.startup->disable(*item);
    else
        m_context.startup->openLoginItemSettings();
    close();
}

void ExplainView::close()
{
    m_flow.reset();
    m_text.clear();
    m_note.clear();
    Q_EMIT changed();
}

} // namespace swabby
