#pragma once

#include "platform/desktop/TrayItem.h"

#include <xcb/xcb.h>

#include <string_view>

namespace swabby {

/// The small X11 window that a panel takes in. It is drawn without a toolkit, since a toolkit's windows bring
/// a background of their own.
class TrayWindow {
public:
    /// Made hidden, for the panel to show. The visual is the one that the panel wants; one without a
    /// transparency of its own gets the panel's background behind the picture.
    TrayWindow(xcb_connection_t *connection, const xcb_screen_t &screen, xcb_visualid_t visual);
    ~TrayWindow();
    TrayWindow(const TrayWindow &) = delete;
    TrayWindow &operator=(const TrayWindow &) = delete;

    xcb_window_t id() const { return m_window; }
    QSize size() const { return m_size; }
    void setSize(QSize size) { m_size = size; }
    /// Fills the window with the picture, as large as fits. Nothing is drawn where there is none.
    void paint(const TrayPicture &picture) const;
    /// The server has already taken the window away.
    void forget() { m_window = XCB_NONE; }

private:
    QImage background() const;
    void describe() const;

    xcb_connection_t *m_connection;
    std::uint8_t m_depth;
    xcb_window_t m_window;
    xcb_colormap_t m_colormap = XCB_NONE;
    QSize m_size;
};

/// Lets a request fail without a word: what it was about may have gone meanwhile.
void letFail(xcb_connection_t *connection, xcb_void_cookie_t checkedRequest);

} // namespace swabby
