#pragma once

#include <QtCore/QAbstractNativeEventFilter>

#include <xcb/xcb.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <string_view>

namespace swabby {

/// What the X server answered; null when it refused.
template <typename Reply>
using Answer = std::unique_ptr<Reply, decltype(&std::free)>;
template <typename Reply>
Answer<Reply> answer(Reply *reply)
{
    return Answer<Reply>(reply, &std::free);
}

/// The atom of that name.
xcb_atom_t atomOf(xcb_connection_t *connection, std::string_view name);

/// Follows who does something for all programs of an X11 screen, such as taking small windows into a panel:
/// whoever owns the selection of that name on the application's screen. Without X11 nobody does.
class SelectionOwner : private QAbstractNativeEventFilter {
public:
    /// changed is told when another one owns it, or none, and when that property of the owner's window
    /// changes; no name for none.
    SelectionOwner(std::string_view name, std::string_view property, std::function<void()> changed);
    ~SelectionOwner() override;

    /// Null without X11.
    xcb_connection_t *connection() const { return m_connection; }
    const xcb_screen_t *screen() const { return m_screen; }
    /// The owner's window; XCB_NONE for none.
    xcb_window_t window() const { return m_window; }

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void listenToRoot() const;
    void look();

    std::function<void()> m_changed;
    xcb_connection_t *m_connection = nullptr;
    const xcb_screen_t *m_screen = nullptr;
    xcb_atom_t m_selection = XCB_NONE;
    xcb_atom_t m_property = XCB_NONE;
    xcb_atom_t m_comes = XCB_NONE;
    xcb_window_t m_window = XCB_NONE;
};

} // namespace swabby
