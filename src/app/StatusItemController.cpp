#include "app/StatusItemController.h"

#include "state/AppState.h"

#include <algorithm>

namespace swabby {

StatusItemController::StatusItemController(AppState &state, Actions actions, TrayItems items)
    : m_state(state), m_actions(std::move(actions)), m_items(std::move(items))
{
    for (const auto &item : m_items) {
        connect(item.get(), &TrayItem::placeChanged, this, &StatusItemController::updateTitle);
        // Queued, since a window that opens takes its time and the panel waits for its click to be taken.
        connect(item.get(), &TrayItem::activated, this, m_actions.togglePopover, Qt::QueuedConnection);
        connect(item.get(), &TrayItem::menuWanted, this, m_actions.toggleItemMenu, Qt::QueuedConnection);
        connect(item.get(), &TrayItem::commanded, this, &StatusItemController::follow, Qt::QueuedConnection);
    }
    updateTitle();
    // Queued, so that the title reads the values after the change.
    connect(&m_state, &AppState::changed, this, &StatusItemController::updateTitle, Qt::QueuedConnection);
}

TrayItem::Place StatusItemController::place() const
{
    TrayItem::Place best = TrayItem::Place::none;
    for (const auto &item : m_items)
        if (best == TrayItem::Place::none || item->place() == TrayItem::Place::there)
            best = item->place();
    return best;
}

// As long as a better place may turn up within moments, the item does not flash up in a lesser one.
void StatusItemController::chooseItem()
{
    const auto found = std::find_if(m_items.begin(), m_items.end(),
                                    [](const auto &item) { return item->place() != TrayItem::Place::none; });
    const bool isThere = found != m_items.end() && (*found)->place() == TrayItem::Place::there;
    TrayItem *chosen = isThere ? found->get() : nullptr;
    if (chosen == m_statusItem)
        return;
    if (m_statusItem != nullptr)
        m_statusItem->hide();
    m_statusItem = chosen;
    m_shown.reset();
}

void StatusItemController::updateTitle()
{
    chooseItem();
    const MenuBarTitle now = menuBarTitle(m_state.stats().cpuUsagePercent, m_state.health());
    if (m_statusItem == nullptr || now == m_shown)
        return;
    m_shown = now;
    m_statusItem->show({[now](int side) { return renderTraySquare(now, side); }, now.text,
                        [now](double ratio) { return renderTitleImage(now, ratio); }});
}

void StatusItemController::follow(TrayCommand command)
{
    switch (command) {
    case TrayCommand::openMainWindow:
        m_actions.openMainWindow();
        break;
    case TrayCommand::openAskWindow:
        m_actions.openAskWindow();
        break;
    case TrayCommand::openSettingsWindow:
        m_actions.openSettingsWindow();
        break;
    case TrayCommand::refresh:
        m_state.refresh();
        break;
    case TrayCommand::quit:
        m_actions.quit();
        break;
    }
}

} // namespace swabby
