#include "ui/qmltypes/StateView.h"

#include "health/HealthRules.h"
#include "ui/presentation/Gauges.h"
#include "ui/presentation/HealthText.h"
#include "ui/presentation/LeakText.h"
#include "ui/presentation/NetworkText.h"
#include "ui/presentation/Sections.h"
#include "ui/presentation/StartupText.h"

#include <QtQml/QQmlEngine>

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

StateView::StateView(QObject *parent) : QObject(parent)
{
    // Members handed to QML without an owner would otherwise be deleted by it.
    for (RowModel *model : {&m_gauges, &m_issues, &m_speedIssues, &m_leaks, &m_topProcesses, &m_processes,
                            &m_drainers, &m_networkUsers, &m_browsers, &m_startupToReview, &m_startupRest})
        QJSEngine::setObjectOwnership(model, QJSEngine::CppOwnership);
}

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
    const auto rows = [this](const QList<ProcessSample> &processes) {
        return processRowTexts(processes, ProcessRowMode::activity, m_figures.pinnedNames);
    };
    QList<ProcessRowText> top = rows(m_figures.processes.mid(0, 1));
    for (ProcessRowText &row : top)
        row.detail += QStringLiteral(" memory");
    m_topProcesses.show(top, pidOf);
    m_processes.show(rows(filteredProcesses(m_figures.processes, m_searchText)), pidOf);
    const auto found = [this](const QList<ProcessSample> &processes, ProcessRowMode mode) {
        return processRowTexts(filteredProcesses(processes, m_searchText), mode, m_figures.pinnedNames);
    };
    m_drainers.show(found(m_figures.batteryDrainers, ProcessRowMode::battery), pidOf);
    m_networkUsers.show(found(m_figures.networkUsers, ProcessRowMode::network), pidOf);
}

QString StateView::healthWord() const
{
    return swabby::healthWord(m_figures.health);
}

int StateView::healthTint() const
{
    return static_cast<int>(tintOf(m_figures.health));
}

SpeedDay StateView::speedDay() const
{
    return {speedStretches(m_figures.history, m_figures.time)};
}

bool StateView::hasSpeedLine() const
{
    const QList<SpeedStretch> stretches = speedDay().stretches;
    return std::any_of(stretches.begin(), stretches.end(),
                       [](const SpeedStretch &stretch) { return stretch.size() > 1; });
}

QString StateView::averageSpeed() const
{
    return averageSpeedText(m_figures.history);
}

QString StateView::speedSentence() const
{
    return speedHistorySentence(m_figures.history);
}

BatterySummary StateView::battery() const
{
    return batterySummary(m_figures.stats);
}

QString StateView::networkRate() const
{
    return totalNetworkRate(m_figures.networkUsers);
}

QString StateView::networkSentence() const
{
    return swabby::networkSentence(m_figures.networkUsers);
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
