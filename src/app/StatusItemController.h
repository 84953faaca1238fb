#pragma once

#include "app/TitleImage.h"

#include <QtCore/QObject>

#include <functional>
#include <memory>

class QMenu;
class QSystemTrayIcon;

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
        std::function<void()> quit = {};
    };

    StatusItemController(AppState &state, Actions actions, QObject *parent = nullptr);
    ~StatusItemController() override;

    /// Whether there is a place that shows the item.
    static bool hasPlace();

    /// Draws the title anew when it has changed.
    void updateTitle();
    TitleColor cpuColor() const;
    QImage renderTitleImage(double devicePixelRatio = 1) const;
    /// The click on the item.
    void togglePopover();

    QSystemTrayIcon *statusItem() const { return m_statusItem.get(); }

private:
    MenuBarTitle title() const;
    void placeItem();

    AppState &m_state;
    Actions m_actions;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_statusItem;
    std::optional<MenuBarTitle> m_shown;
};

} // namespace swabby
