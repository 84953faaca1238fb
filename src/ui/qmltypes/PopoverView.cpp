#include "ui/qmltypes/PopoverView.h"

#include "health/HealthRules.h"
#include "settings/Settings.h"
#include "state/AppState.h"
#include "ui/presentation/HealthText.h"
#include "ui/presentation/PopoverText.h"

#include <QtQml/QQmlEngine>

namespace swabby {

PopoverView::PopoverView(const UserInterfaceContext &context, QObject *parent)
    : QObject(parent), m_context(context)
{
    QJSEngine::setObjectOwnership(&m_issues, QJSEngine::CppOwnership);
    QJSEngine::setObjectOwnership(&m_chips, QJSEngine::CppOwnership);
    AppState *state = m_context.state;
    if (state == nullptr)
        return;
    connect(state, &AppState::changed, this, &PopoverView::followState);
    connect(state, &AppState::applied, this, [this] {
        m_isRefreshing = false;
        Q_EMIT changed();
    });
    followState();
}

void PopoverView::followState()
{
    const AppState &state = *m_context.state;
    m_isFirstRun = !Settings(*state.machine().settings).value(setting<"hasCompletedOnboarding">);
    show(figuresOf(state), state.lastScan());
}

void PopoverView::show(const Figures &figures, const std::optional<double> &lastScan)
{
    m_figures = figures;
    m_lastScan = lastScan;
    m_issues.show(issueCards(figures.healthIssues), [](const IssueCard &card) { return card.id; });
    m_chips.show(figures.isKnown ? popoverChips(figures.stats, figures.speedIsKnown) : QList<PopoverChip>(),
                 [](const PopoverChip &chip) { return chip.label; });
    Q_EMIT changed();
}

QString PopoverView::healthWord() const
{
    return swabby::healthWord(m_figures.health);
}

int PopoverView::healthTint() const
{
    return static_cast<int>(tintOf(m_figures.health));
}

QString PopoverView::updated() const
{
    std::optional<QDateTime> time;
    if (m_lastScan || m_figures.isKnown)
        time = QDateTime::fromMSecsSinceEpoch(
            static_cast<qint64>(m_lastScan.value_or(m_figures.stats.timestamp) * 1'000));
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
    if (section && m_context.state != nullptr)
        m_context.state->requestMainSection(section);
    if (m_context.openMainWindow)
        m_context.openMainWindow();
    Q_EMIT left();
}

void PopoverView::openSection(const QString &name)
{
    openMainWindowAt(sectionFrom(name));
}

void PopoverView::openIssue(int index)
{
    if (index < 0 || index >= m_figures.healthIssues.size())
        return;
    const MainSection section = m_figures.healthIssues.at(index).section;
    setShowHealthDetail(false);
    openMainWindowAt(section);
}

void PopoverView::openCheck()
{
    openMainWindowAt(MainSection::swabbyCheck);
}

void PopoverView::openMainWindow()
{
    openMainWindowAt(std::nullopt);
}

void PopoverView::openAskWindow()
{
    if (m_context.openAskWindow)
        m_context.openAskWindow();
    Q_EMIT left();
}

void PopoverView::openSettingsWindow()
{
    if (m_context.openSettingsWindow)
        m_context.openSettingsWindow();
    Q_EMIT left();
}

void PopoverView::refresh()
{
    if (m_isRefreshing || m_context.state == nullptr)
        return;
    m_isRefreshing = true;
    Q_EMIT changed();
    m_context.state->refresh();
}

void PopoverView::quit()
{
    if (m_context.quit)
        m_context.quit();
}

} // namespace swabby
