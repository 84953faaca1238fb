#pragma once

#include "platform/linux/desktop/SelectionOwner.h"
#include "platform/linux/desktop/TrayWindow.h"

namespace swabby {

/// The item as an X11 panel shows it that takes in small windows.
class EmbeddedTrayItem : public TrayItem, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    /// On the display of the application; one without X11 has no place for it.
    EmbeddedTrayItem();
    ~EmbeddedTrayItem() override;

    Place place() const override { return m_manager.window() != XCB_NONE ? Place::there : Place::none; }
    void show(const TrayPicture &picture) override;
    void hide() override;

private:
    struct Atoms {
        xcb_atom_t request, visual;
    };

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void changeManager();
    void dock();
    xcb_visualid_t wantedVisual() const;
    bool follow(const xcb_generic_event_t *event);
    void press(const xcb_button_press_event_t &press);

    SelectionOwner m_manager;
    xcb_connection_t *m_connection;
    Atoms m_atoms = {};
    std::unique_ptr<TrayWindow> m_window;
    TrayPicture m_picture;
};

} // namespace swabby
