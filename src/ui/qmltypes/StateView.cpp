#include "ui/qmltypes/StateView.h"

#include "ui/presentation/Gauges.h"
#include "ui/presentation/LeakText.h"
#include "ui/presentation/Sections.h"
#include "ui/presentation/StartupText.h"

#include <algorithm>

namespace swabby {
namespace {

QString pidOf(const ProcessRowText &row)
{
    return QString::number(row.pid);
}

QString issueIdOf(const IssueCard &card)
{
    return card.id;
}

} // namespace

void StateView::show(const Figures &figures, bool isCompact)
{
    m_figures = figures;
    m_isCompact = isCompact;
    m_gauges.show(figures.isKnown ? overviewGauges(figures.stats, figures.speedIsKnown) : gaugesToCome(),
                  [](const Gauge &gauge) { return gauge.title.section(QLatin1Char(' '), 0, 0); });
    m_issues.show(issueCards(figures.healthIssues), issueIdOf);
    m_speedIssues.show(issueCards(figures.healthIssues, MainSection::speed), issueIdOf);
    m_leaks.show(leakTexts(figures.leakSuspects),
                 [](const LeakText &leak) { return QString::number(leak.pid); });
    m_browsers.show(browserRowTexts(figures.browserRollups),
                    [](const BrowserRowText &row) { return row.name; });
    const auto itemKey = [](const StartupRowText &row) { return row.id; };
    m_startupToReview.show(startupRowTexts(figures.loginItems, true), itemKey);
    m_startupRest.show(startupRowTexts(figures.loginItems, false), itemKey);
    showProcesses();
    Q_EMIT changed();
}

void StateView::showProcesses()
{
    m_topProcesses.show(topProcessTexts(m_figures.processes, m_figures.pinnedNames), pidOf);
    const auto found = [this](const QList<ProcessSample> &processes, ProcessRowMode mode) {
        return processRowTexts(filteredProcesses(processes, m_searchText), mode, m_figures.pinnedNames);
    };
    m_processes.show(found(m_figures.processes, ProcessRowMode::activity), pidOf);
    m_drainers.show(found(m_figures.batteryDrainers, ProcessRowMode::battery), pidOf);
    m_networkUsers.show(found(m_figures.networkUsers, ProcessRowMode::network), pidOf);
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
    showProcesses();
    Q_EMIT searchTextChanged();
}

} // namespace swabby
