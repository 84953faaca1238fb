#pragma once

#include "platform/linux/desktop/TrayWindow.h"

#include <QtCore/QAbstractNativeEventFilter>

namespace swabby {

/// The item as an X11 panel shows it that takes in small windows.
class EmbeddedTrayItem : public TrayItem, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    /// On the display of the application; one without X11 has no place for it.
    EmbeddedTrayItem();
    ~EmbeddedTrayItem() override;

    Place place() const override { return m_manager != XCB_NONE ? Place::there : Place::none; }
    void show(const TrayPicture &picture) override;
    void hide() override;

private:
    struct Atoms {
        xcb_atom_t selection, manager, request, visual;
    };

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void lookForManager();
    void listenToRoot() const;
    void changeManager();
    void dock();
    xcb_visualid_t wantedVisual() const;
    bool follow(const xcb_generic_event_t *event);
    void press(const xcb_button_press_event_t &press);

    xcb_connection_t *m_connection = nullptr;
    const xcb_screen_t *m_screen = nullptr;
    Atoms m_atoms = {};
    xcb_window_t m_manager = XCB_NONE;
    std::unique_ptr<TrayWindow> m_window;
    TrayPicture m_picture;
};

} // namespace swabby
