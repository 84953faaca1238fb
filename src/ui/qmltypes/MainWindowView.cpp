#include "ui/qmltypes/MainWindowView.h"

#include "flows/cleanup/QuitFlow.h"
#include "platform/WhenDone.h"
#include "settings/Settings.h"
#include "state/AppState.h"
#include "ui/presentation/NoticeText.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtGui/QStyleHints>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace swabby {

MainWindowView::MainWindowView(const UserInterfaceContext &context)
    : m_context(context),
      m_coordinator(context, this),
      m_removal(context, m_coordinator, this),
      m_check(context, m_coordinator, this),
      m_storage(context, m_coordinator, this),
      m_startup(context, m_coordinator, this),
      m_developer(context, m_coordinator, this),
      m_search(context.state, context.systemCalls)
{
    AppState &state = m_context.state;
    m_showWelcome = Settings(*state.machine().settings).isFirstRun();
    m_isRefreshing = state.refreshesApplied() == 0;
    connect(&state, &AppState::changed, this, &MainWindowView::followState);
    connect(&state, &AppState::applied, this, [this] {
        setRefreshing(false);
        followStanding();
    });
    connect(&state, &AppState::historyNotStored, this, &MainWindowView::showHistoryTrouble);
    connect(&state, &AppState::pinNotStored, this,
            [this] { m_coordinator.setNotice(noticeText(Notice::notStored, QStringLiteral("The pin"))); });
    connect(&m_stateView, &StateView::searchTextChanged, this,
            [this] { m_search.setWanted(!m_stateView.searchText().trimmed().isEmpty()); });
    connect(&m_search, &ProgramSearch::changed, this,
            [this] { m_stateView.showEverything(m_search.programs()); });
    connect(&m_context.quitting, &QuitFlow::finished, &m_search, &ProgramSearch::look);
    showHistoryTrouble(state.historyTrouble());
    m_release.setSingleShot(true);
    m_release.callOnTimeout(this, &MainWindowView::holdRows);
    followState();
    followStanding();
}

QList<RowModel *> MainWindowView::rows() const
{
    QList<RowModel *> rows;
    for (const QObject *view :
         std::initializer_list<const QObject *>{&m_stateView, &m_check, &m_storage, &m_startup, &m_developer})
        rows += view->findChildren<RowModel *>();
    return rows;
}

void MainWindowView::setHeld(bool isHeld)
{
    if (isHeld == m_isHeld)
        return;
    m_isHeld = isHeld;
    m_release.stop();
    if (isHeld)
        holdRows();
    else
        m_release.start(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    Q_EMIT heldChanged();
}

void MainWindowView::holdRows()
{
    for (RowModel *list : rows())
        list->setHeld(m_isHeld);
    // Another program may be the busiest by now.
    if (!m_isHeld)
        followState();
}

void MainWindowView::followStanding()
{
    const Standing now = m_context.standing();
    if (now == m_standing)
        return;
    m_standing = now;
    Q_EMIT standingChanged();
}

void MainWindowView::showHistoryTrouble(const QString &why)
{
    if (!why.isEmpty())
        m_coordinator.setNotice(noticeText(Notice::historyNotStored, why));
}

void MainWindowView::followState()
{
    AppState &state = m_context.state;
    m_stateView.show(shownStateOf(state),
                     Settings(*state.machine().settings).value(setting<"rowDensity">) == RowDensity::compact);
    // Whether there is a panel may turn out only now.
    QList<WelcomePoint> points = welcomePoints(m_context.panelPlace(), m_context.state.machine().words);
    if (points != std::exchange(m_welcomePoints, points))
        Q_EMIT welcomePointsChanged();
    if (m_isScanning != state.isScanning()) {
        m_isScanning = state.isScanning();
        Q_EMIT refreshingChanged();
    }
    if (const auto requested = state.requestedMainSection()) {
        const bool isThere = *requested == m_selection && m_stateView.isKnown();
        select(*requested);
        state.requestMainSection(std::nullopt);
        // Whoever asks for a check that is looked at already wants another one.
        if (isThere && *requested == MainSection::swabbyCheck && !m_check.isScanning())
            m_check.run();
    }
}

int MainWindowView::selectedIndex() const
{
    for (int index = 0; index < m_sections.size(); ++index)
        if (m_sections.at(index).name == sectionName(m_selection))
            return index;
    return -1;
}

void MainWindowView::select(MainSection section)
{
    if (section == m_selection)
        return;
    m_selection = section;
    // Nobody is at anything on the new page yet.
    for (RowModel *list : rows())
        list->settle();
    m_coordinator.dismissNotice(); // it is about the section that was left
    Q_EMIT selectionChanged();
}

void MainWindowView::selectIndex(int index)
{
    if (const auto section = sectionFrom(m_sections.value(index).name))
        select(*section);
}

void MainWindowView::followShortcut(int index)
{
    if (sectionFrom(m_sections.value(index).name) == MainSection::swabbyCheck)
        openCheck();
    else
        selectIndex(index);
}

void MainWindowView::performIssue(int index)
{
    m_showHealthDetail = false;
    Q_EMIT sheetChanged();
    const QList<HealthIssue> &issues = m_stateView.shown().healthIssues;
    if (index < 0 || index >= issues.size())
        return;
    const HealthIssue issue = issues.at(index);
    MainSection selection = m_selection;
    m_coordinator.perform(issue, selection);
    const bool isThere = selection == m_selection && issue.action && !isDestructive(issue);
    select(selection);
    if (!isThere)
        return;
    setProperty("speedView", 0); // where the busiest are listed
    Q_EMIT remedyWanted();
}

std::optional<ProcessSample> MainWindowView::findProcess(int pid) const
{
    const QList<ProcessSample> &found = m_search.programs();
    const auto it = std::ranges::find(found, pid, &ProcessSample::pid);
    const auto listed = m_stateView.shown().findProcess(pid);
    return listed || it == found.end() ? listed : std::optional(*it);
}

void MainWindowView::togglePin(int pid)
{
    if (const auto process = findProcess(pid); process)
        m_context.state.togglePin(process->name);
}

void MainWindowView::explainProcess(int pid)
{
    if (const auto process = findProcess(pid))
        m_coordinator.explain({*process});
}

void MainWindowView::quitProcess(int pid)
{
    if (const auto process = findProcess(pid))
        m_coordinator.quit(*process, Quitting::Force::no);
}

void MainWindowView::follow(int command, int pid)
{
    const auto process = findProcess(pid);
    if (process && static_cast<RowCommand>(command) == RowCommand::forceQuit)
        m_coordinator.quit(*process, Quitting::Force::yes);
    else if (process)
        m_coordinator.explain({*process});
}

void MainWindowView::openCheck()
{
    if (m_selection == MainSection::swabbyCheck)
        m_check.run();
    else
        select(MainSection::swabbyCheck);
}

void MainWindowView::finishWelcome()
{
    m_showWelcome = false;
    AppState &state = m_context.state;
    const auto storing = state.bookkeeping().ask([machine = state.sharedMachine()] {
        return Settings(*machine->settings).store(setting<"hasCompletedOnboarding">, true);
    });
    whenDone(&state, storing, [&state, self = QPointer(this)](bool isStored) {
        if (self && !isStored)
            self->m_coordinator.setNotice(
                noticeText(Notice::notStored, QStringLiteral("That you have been welcomed")));
        state.noteStoredSetting();
    });
    Q_EMIT sheetChanged();
}

void MainWindowView::refresh()
{
    if (m_isRefreshing)
        return;
    setRefreshing(true);
    m_context.state.refresh();
}

void MainWindowView::setRefreshing(bool isRefreshing)
{
    if (isRefreshing == m_isRefreshing)
        return;
    m_isRefreshing = isRefreshing;
    Q_EMIT refreshingChanged();
}

bool MainWindowView::mayClose()
{
    if (m_context.panelPlace() == TrayItem::Place::there)
        return true;
    m_showHealthDetail = false;
    m_showLastWindowNotice = true;
    Q_EMIT sheetChanged();
    return false;
}

} // namespace swabby
