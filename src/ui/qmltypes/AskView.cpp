#include "ui/qmltypes/AskView.h"

#include "flows/cleanup/ConfirmationBuilder.h"
#include "flows/health/ProgramSearch.h"
#include "platform/WhenDone.h"
#include "ui/presentation/NoticeText.h"

namespace swabby {

AskView::AskView(const UserInterfaceContext &context)
    : m_context(context), m_confirmation(context, this), m_flow(context.state, context.ai)
{
    connect(&m_flow, &AskFlow::changed, this, &AskView::followFlow);
    connect(&m_confirmation, &ConfirmationView::quitEnded, this,
            [this](const QString &problem, const QString &before) {
                if (!problem.isEmpty() || m_notice == before)
                    setNotice(problem);
            });
}

void AskView::setQuestion(const QString &question)
{
    if (question == m_question)
        return;
    m_question = question;
    Q_EMIT questionChanged();
}

QStringList AskView::suggestions() const
{
    QStringList others = m_flow.suggestions();
    others.removeAll(m_asked);
    return others;
}

void AskView::ask()
{
    if (m_flow.isAsking() || !canAsk())
        return;
    m_asked = m_question.trimmed();
    m_notice.clear();
    m_flow.ask(m_asked);
}

void AskView::askAgain()
{
    m_flow.ask(m_asked);
}

void AskView::followFlow()
{
    if (!m_flow.isAsking() && m_flow.explanation())
        m_answer = {*m_flow.explanation(), m_flow.appToQuit().value_or(QString()), m_flow.note(),
                    AssistantTrouble(m_flow.failure())};
    Q_EMIT changed();
}

QString AskView::quitLabel() const
{
    const auto process = namedProcess();
    return m_answer && !(process && !process->mayBeQuit()) ? quitLabelText(m_answer->appToQuit) : QString();
}

std::optional<ProcessSample> AskView::namedProcess() const
{
    return ConfirmationBuilder::findProcess(m_answer ? m_answer->appToQuit : QString(), m_context.state);
}

void AskView::quitApp()
{
    if (!m_answer)
        return;
    setNotice({});
    if (const auto process = namedProcess()) {
        m_confirmation.askToQuit(*process, Quitting::Force::no);
        return;
    }
    // The lists are short: it may run all the same.
    const auto looking = m_context.systemCalls.ask(
        [machine = m_context.state.sharedMachine()] { return everythingThatRuns(*machine); });
    whenDone(this, looking, [this, name = m_answer->appToQuit](const QList<ProcessSample> &programs) {
        if (const auto found = programCalled(name, programs))
            m_confirmation.askToQuit(*found, Quitting::Force::no);
        else if (!programs.isEmpty()) // else nobody knows
            setNotice(noticeText(Notice::isGone, name));
    });
}

void AskView::showAnswer(const QString &question, const ShownAnswer &answer)
{
    setQuestion(question);
    m_asked = question.trimmed();
    m_answer = answer;
    Q_EMIT changed();
}

void AskView::setNotice(const QString &notice)
{
    if (notice == m_notice)
        return;
    m_notice = notice;
    Q_EMIT changed();
}

} // namespace swabby
