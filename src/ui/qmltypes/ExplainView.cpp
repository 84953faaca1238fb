#include "ui/qmltypes/ExplainView.h"

#include "flows/startup/StartupFlow.h"
#include "platform/WhenDone.h"
#include "ui/qmltypes/ConfirmationView.h"

namespace swabby {
namespace {

/// Blocks.
ProgramOrigin originOf(Machine &machine, const ExplainRequest &request)
{
    ProgramOrigin origin;
    if (const auto *process = std::get_if<ProcessSample>(&request.kind)) {
        origin = machine.origins->ofProcess(process->pid);
        origin.startedAt = machine.boot->startEpoch(process->pid);
    } else if (const auto *item = std::get_if<LoginItem>(&request.kind)) {
        origin.package = machine.origins->packageOf(item->plistPath);
        if (origin.package.isEmpty())
            origin.package = machine.origins->packageOf(item->programPath);
    }
    return origin;
}

} // namespace

ExplainView::ExplainView(const UserInterfaceContext &context, ConfirmationView &confirmation, QObject *parent)
    : QObject(parent), m_context(context), m_confirmation(confirmation)
{
}

void ExplainView::open(const ExplainRequest &request)
{
    begin(request);
    connect(m_flow.get(), &ExplainFlow::changed, this, &ExplainView::changed);
    m_flow->load();
    Q_EMIT changed();
}

void ExplainView::begin(const ExplainRequest &request)
{
    m_flow = std::make_unique<ExplainFlow>(request, m_context.ai);
    m_origin.reset();
    const auto asking = m_context.systemCalls.ask(
        [machine = m_context.state.sharedMachine(), request] { return originOf(*machine, request); });
    whenDone(this, asking, [this, id = request.id()](const ProgramOrigin &origin) {
        if (!m_flow || m_flow->request().id() != id)
            return;
        m_origin = origin;
        Q_EMIT changed();
    });
}

QList<ExplainFact> ExplainView::facts() const
{
    const Machine &machine = m_context.state.machine();
    return m_flow ? explainFacts(m_flow->request(), m_origin, machine.clock->now(), machine.words)
                  : QList<ExplainFact>();
}

void ExplainView::showExplanation(const ExplainRequest &request, const QString &text, const QString &note)
{
    begin(request);
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
