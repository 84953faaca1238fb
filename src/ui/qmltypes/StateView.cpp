#include "ui/qmltypes/StateView.h"

#include "ui/presentation/Gauges.h"
#include "ui/presentation/LeakText.h"
#include "ui/presentation/Sections.h"
#include "ui/presentation/StartupText.h"

#include <algorithm>

namespace swabby {
namespace {

/// More than that nobody reads through.
constexpr qsizetype mostFound = 50;

QString pidOf(const ProcessRowText &row)
{
    return QString::number(row.pid);
}

QString issueIdOf(const IssueCard &card)
{
    return card.id;
}

} // namespace

void StateView::show(const ShownState &shown, bool isCompact)
{
    // Much of what is published is about something else, as that a check is over.
    const bool hasOtherPrograms =
        shown.refreshesApplied != m_shown.refreshesApplied || shown.processes != m_shown.processes ||
        shown.batteryDrainers != m_shown.batteryDrainers || shown.networkUsers != m_shown.networkUsers ||
        shown.pinnedNames != m_shown.pinnedNames ||
        m_topPid != (shown.processes.isEmpty() ? 0 : shown.processes.first().pid);
    const bool hasOtherItems = shown.loginItems != m_shown.loginItems;
    m_shown = shown;
    m_isCompact = isCompact;
    m_gauges.show(shown.isKnown ? overviewGauges(shown.stats, shown.speedIsKnown) : gaugesToCome(),
                  [](const Gauge &gauge) { return gauge.title.section(QLatin1Char(' '), 0, 0); });
    m_issues.show(issueCards(shown.healthIssues), issueIdOf);
    m_speedIssues.show(issueCards(shown.healthIssues, MainSection::speed), issueIdOf);
    m_leaks.show(leakTexts(shown.leakSuspects),
                 [](const LeakText &leak) { return QString::number(leak.pid); });
    m_browsers.show(browserRowTexts(shown.browserRollups, shown.words),
                    [](const BrowserRowText &row) { return row.name; });
    if (hasOtherItems) {
        const auto itemKey = [](const StartupRowText &row) { return row.id; };
        m_startupToReview.show(startupRowTexts(shown.loginItems, true, shown.words), itemKey);
        m_startupRest.show(startupRowTexts(shown.loginItems, false, shown.words), itemKey);
    }
    if (hasOtherPrograms)
        showProcesses();
    Q_EMIT changed();
}

void StateView::showProcesses()
{
    QList<ProcessSample> top = m_shown.processes.mid(0, 1);
    // The one that is pointed at stays the one that is shown, as long as it runs.
    if (m_topProcesses.isHeld() && !top.isEmpty())
        top = {m_shown.findProcess(m_topPid).value_or(top.first())};
    m_topPid = top.isEmpty() ? 0 : top.first().pid;
    m_topProcesses.show(topProcessTexts(top, m_shown.pinnedNames, m_shown.words), pidOf);
    const auto rows = [this](const QList<ProcessSample> &processes, ProcessRowMode mode) {
        return processRowTexts(processes, mode, m_shown.pinnedNames, m_shown.words);
    };
    const auto found = [&](const QList<ProcessSample> &processes, ProcessRowMode mode) {
        return rows(filteredProcesses(processes, m_searchText), mode);
    };
    const QList<ProcessSample> running =
        filteredProcesses(withOthers(m_shown.processes, m_everything), m_searchText);
    m_moreFound = std::max<qsizetype>(0, running.size() - mostFound);
    m_processes.show(rows(running.mid(0, mostFound), ProcessRowMode::activity), pidOf);
    m_drainers.show(found(m_shown.batteryDrainers, ProcessRowMode::battery), pidOf);
    m_networkUsers.show(networkRowTexts(filteredProcesses(m_shown.networkUsers, m_searchText),
                                        m_shown.networkUsers, m_shown.pinnedNames, m_shown.words),
                        pidOf);
}

void StateView::showEverything(const QList<ProcessSample> &programs)
{
    m_everything = programs;
    showProcesses();
    Q_EMIT searchTextChanged();
}

bool StateView::hasSpeedLine() const
{
    const QList<SpeedStretch> stretches = speedDay().stretches;
    return std::any_of(stretches.begin(), stretches.end(),
                       [](const SpeedStretch &stretch) { return stretch.size() > 1; });
}

void StateView::setSearchText(const QString &text)
{
    if (text == m_searchText)
        return;
    m_searchText = text;
    if (text.trimmed().isEmpty())
        m_everything.clear();
    showProcesses();
    for (RowModel *list : {&m_processes, &m_drainers, &m_networkUsers})
        list->settle();
    Q_EMIT searchTextChanged();
}

} // namespace swabby
