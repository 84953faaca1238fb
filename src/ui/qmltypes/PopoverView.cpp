#include "ui/qmltypes/PopoverView.h"

#include "platform/desktop/Display.h"
#include "platform/desktop/TrayItem.h"
#include "settings/Settings.h"
#include "state/AppState.h"
#include "ui/presentation/PopoverText.h"

#include <algorithm>

namespace swabby {

PopoverView::PopoverView(const UserInterfaceContext &context)
    : m_context(context), m_isBlended(blendsWindows())
{
    connect(&m_context.state, &AppState::changed, this, &PopoverView::followState);
    connect(&m_context.state, &AppState::applied, this, [this] {
        m_isRefreshing = false;
        Q_EMIT changed();
    });
    followState();
}

void PopoverView::followState()
{
    const AppState &state = m_context.state;
    m_isFirstRun = Settings(*state.machine().settings).isFirstRun();
    show(shownStateOf(state), state.lastScan());
}

void PopoverView::show(const ShownState &shown, const std::optional<double> &lastScan)
{
    m_shown = shown;
    m_lastScan = lastScan;
    m_issues.show(issueCards(shown.healthIssues), [](const IssueCard &card) { return card.id; });
    m_chips.show(shown.isKnown ? popoverChips(shown.stats, shown.speedIsKnown) : QList<PopoverChip>(),
                 [](const PopoverChip &chip) { return chip.label; });
    Q_EMIT changed();
}

QString PopoverView::updated() const
{
    std::optional<QDateTime> time;
    if (m_lastScan || m_shown.isKnown) {
        const double refresh = m_shown.isKnown ? m_shown.stats.timestamp : 0;
        time = QDateTime::fromMSecsSinceEpoch(
            static_cast<qint64>(std::max(m_lastScan.value_or(0), refresh) * 1'000));
    }
    return updatedText(time, QLocale());
}

void PopoverView::setShowHealthDetail(bool isShown)
{
    if (isShown == m_showHealthDetail)
        return;
    m_showHealthDetail = isShown;
    Q_EMIT changed();
}

void PopoverView::openMainWindowAt(std::optional<MainSection> section)
{
    if (section)
        m_context.state.requestMainSection(section);
    m_context.openMainWindow();
    Q_EMIT left();
}

void PopoverView::openIssue(int index)
{
    if (index < 0 || index >= m_shown.healthIssues.size())
        return;
    const MainSection section = m_shown.healthIssues.at(index).section;
    setShowHealthDetail(false);
    openMainWindowAt(section);
}

void PopoverView::openAskWindow()
{
    m_context.openAskWindow();
    Q_EMIT left();
}

void PopoverView::openSettingsWindow()
{
    m_context.openSettingsWindow();
    Q_EMIT left();
}

void PopoverView::refresh()
{
    if (m_isRefreshing)
        return;
    m_isRefreshing = true;
    Q_EMIT changed();
    m_context.state.refresh();
}

void PopoverView::follow(int command)
{
    switch (static_cast<TrayCommand>(command)) {
    case TrayCommand::openMainWindow:
        return openMainWindow();
    case TrayCommand::openAskWindow:
        return openAskWindow();
    case TrayCommand::openSettingsWindow:
        return openSettingsWindow();
    case TrayCommand::refresh:
        return refresh();
    case TrayCommand::quit:
        return quit();
    }
}

} // namespace swabby
