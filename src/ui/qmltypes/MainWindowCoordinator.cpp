#include "ui/qmltypes/MainWindowCoordinator.h"

#include "ui/qmltypes/PermissionRequest.h"

namespace swabby {

MainWindowCoordinator::MainWindowCoordinator(const UserInterfaceContext &context, QObject *parent)
    : QObject(parent),
      m_context(context),
      m_confirmation(context, this),
      m_explanation(context, m_confirmation, this)
{
    connect(&m_confirmation, &ConfirmationView::quitEnded, this,
            [this](const QString &problem, const QString &before) {
                if (!problem.isEmpty() || m_notice == before)
                    setNotice(problem);
            });
}

void MainWindowCoordinator::setNotice(const QString &notice, Tint tint)
{
    if (notice == m_notice)
        return;
    m_notice = notice;
    m_noticeTint = tint;
    Q_EMIT noticeChanged();
}

void MainWindowCoordinator::openPermissionSettings(int what)
{
    swabby::openPermissionSettings(what, m_context, this,
                                   [this](const QString &notice) { setNotice(notice); });
}

void MainWindowCoordinator::explain(const ExplainRequest &request)
{
    setNotice({});
    m_explanation.open(request);
}

void MainWindowCoordinator::quit(const ProcessSample &process, Quitting::Force force)
{
    setNotice({});
    m_confirmation.askToQuit(process, force);
}

void MainWindowCoordinator::perform(const HealthIssue &issue, MainSection &selection)
{
    if (!issue.action)
        return;
    if (const auto *open = std::get_if<OpenSection>(&*issue.action))
        selection = open->section;
    else if (const auto *kill = std::get_if<KillProcess>(&*issue.action))
        quit(kill->process, shouldForceQuit(kill->process) ? Quitting::Force::yes : Quitting::Force::no);
}

} // namespace swabby
