#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace swabby {

/// What the X server tells of windows. A question that it does not answer, as for a window that has just
/// closed, gives nothing.
class WindowServer {
public:
    /// Connects to the environment's display. Blocks for as long as the server says nothing.
    WindowServer();

    bool isThere() const { return xcb_connection_has_error(m_connection.get()) == 0; }
    std::vector<xcb_window_t> roots() const;
    xcb_atom_t atom(const std::string &name) const;
    std::vector<std::uint32_t> numbers(xcb_window_t window, xcb_atom_t property) const;
    bool contains(xcb_window_t window, xcb_atom_t property, xcb_atom_t atom) const;
    std::vector<xcb_window_t> visibleChildren(xcb_window_t window) const;
    xcb_window_t selectionOwner(const std::string &selection) const;
    /// The process behind a window; 0 when nobody tells. What the kernel told the server counts; what a
    /// window says of itself only where the server knows nothing, and from this computer.
    std::int32_t processOf(xcb_window_t window) const;
    /// Sends the message of five numbers about the window to whoever listens to the receiver like that.
    void send(xcb_window_t receiver, std::uint32_t listening, xcb_window_t about, xcb_atom_t type,
              const std::uint32_t (&content)[5]) const;
    /// Returns once the server has seen everything that was sent.
    void finish() const;

private:
    std::string text(xcb_window_t window, xcb_atom_t property) const;
    std::int32_t processByServer(xcb_window_t window) const;
    std::int32_t processByItself(xcb_window_t window) const;

    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t *)> m_connection;
    std::string m_host;
    xcb_atom_t m_processId = XCB_NONE;
    bool m_knowsProcesses = false; ///< by the numbers that they have on this computer
};

} // namespace swabby
