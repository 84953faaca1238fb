#include "app/StatusItemController.h"

#include "engine/state/AppState.h"

#include <QtWidgets/QMenu>
#include <QtWidgets/QSystemTrayIcon>

namespace swabby {

StatusItemController::StatusItemController(AppState &state, Actions actions, QObject *parent)
    : QObject(parent), m_state(state), m_actions(std::move(actions)), m_menu(std::make_unique<QMenu>())
{
    m_menu->addAction(QStringLiteral("Open Swabby"), this, [this] { m_actions.openMainWindow(); });
    m_menu->addAction(QStringLiteral("Ask AI"), this, [this] { m_actions.openAskWindow(); });
    m_menu->addAction(QStringLiteral("Settings"), this, [this] { m_actions.openSettingsWindow(); });
    m_menu->addAction(QStringLiteral("Refresh now"), this, [this] { m_state.refresh(); });
    m_menu->addSeparator();
    m_menu->addAction(QStringLiteral("Quit Swabby"), this, [this] { m_actions.quit(); });
    updateTitle();
    // Queued, so that the title reads the values after the change.
    connect(&m_state, &AppState::changed, this, &StatusItemController::updateTitle, Qt::QueuedConnection);
}

StatusItemController::~StatusItemController() = default;

bool StatusItemController::hasPlace()
{
    return QSystemTrayIcon::isSystemTrayAvailable();
}

// A panel may come up after Swabby, so the place is looked for with every title.
void StatusItemController::placeItem()
{
    if (m_statusItem != nullptr || !hasPlace())
        return;
    m_shown.reset();
    m_statusItem = std::make_unique<QSystemTrayIcon>();
    m_statusItem->setContextMenu(m_menu.get());
    connect(m_statusItem.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::MiddleClick)
                    togglePopover();
            });
}

void StatusItemController::updateTitle()
{
    placeItem();
    const MenuBarTitle now = title();
    if (m_statusItem == nullptr || now == m_shown)
        return;
    m_statusItem->setIcon(trayIcon(now));
    m_statusItem->setToolTip(QStringLiteral("Swabby\n") + now.text);
    m_statusItem->show();
    m_shown = now;
}

TitleColor StatusItemController::cpuColor() const
{
    return title().color;
}

QImage StatusItemController::renderTitleImage(double devicePixelRatio) const
{
    return swabby::renderTitleImage(title(), devicePixelRatio);
}

void StatusItemController::togglePopover()
{
    m_actions.togglePopover(m_statusItem != nullptr ? m_statusItem->geometry() : QRect());
}

MenuBarTitle StatusItemController::title() const
{
    return menuBarTitle(m_state.stats().cpuUsagePercent, m_state.health());
}

} // namespace swabby
