#pragma once

#include "app/TitleImage.h"
#include "platform/desktop/TrayItem.h"

#include <QtCore/QObject>

#include <functional>
#include <memory>
#include <optional>

namespace swabby {

class AppState;

/// The item in the menu bar, or in what stands for one: it shows the load and leads into the window.
class StatusItemController : public QObject {
    Q_OBJECT

public:
    struct Actions {
        std::function<void()> openMainWindow = {};
        std::function<void()> openAskWindow = {};
        std::function<void()> openSettingsWindow = {};
        std::function<void(const QRect &statusItem)> togglePopover = {};
        std::function<void(const QRect &statusItem)> toggleItemMenu = {};
        std::function<void()> quit = {};
    };

    /// The items are the ways to be shown, the preferred one first.
    StatusItemController(AppState &state, Actions actions, TrayItems items);

    /// Whether any place shows the item now.
    TrayItem::Place place() const;
    /// Does what a menu's line says.
    void follow(TrayCommand command);

private:
    /// Draws the title anew when it has changed, in the place that there is now.
    void updateTitle();
    void chooseItem();

    AppState &m_state;
    Actions m_actions;
    TrayItems m_items;
    TrayItem *m_statusItem = nullptr;
    std::optional<MenuBarTitle> m_shown;
};

} // namespace swabby
