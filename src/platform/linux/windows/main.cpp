// Tells which programs have windows that can be asked to close, and asks those of one, as a window manager
// does. A program of its own, because a display that hangs holds up whoever talks to it, and nobody else here
// needs its library.
//
//   swabby-windows            prints the id of each process that has such windows
//   swabby-windows holders    that of each which the desktop stands on
//   swabby-windows PID        asks that one's windows, and prints how many
#include "platform/linux/windows/WindowServer.h"
#include "platform/posix/OwnLimits.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <string_view>

using namespace swabby;

namespace {

constexpr std::chrono::milliseconds longest(1'000);
constexpr std::chrono::seconds processorTime(1);
constexpr unsigned long long addressSpace = 256ULL << 20;

struct Closable {
    xcb_window_t root = XCB_NONE;
    xcb_window_t window = XCB_NONE;
    xcb_window_t parent = XCB_NONE; ///< of a dialog
};
using WindowsByProcess = std::map<std::int32_t, std::vector<Closable>>;

/// What people take for windows: as the window manager lists them; without such a list what is on the screen,
/// with a frame around it or not.
std::vector<xcb_window_t> programWindows(const WindowServer &server, xcb_window_t root)
{
    std::vector<xcb_window_t> windows = server.numbers(root, server.atom("_NET_CLIENT_LIST"));
    if (!windows.empty())
        return windows;
    windows = server.visibleChildren(root);
    for (const xcb_window_t window : std::vector(windows))
        for (const xcb_window_t framed : server.visibleChildren(window))
            windows.push_back(framed);
    return windows;
}

/// Only windows that take the question: a window manager ends the programs of others. The desktop itself and
/// panels look like windows and are none that a person closes.
WindowsByProcess closableWindows(const WindowServer &server)
{
    const xcb_atom_t protocols = server.atom("WM_PROTOCOLS");
    const xcb_atom_t question = server.atom("WM_DELETE_WINDOW");
    const xcb_atom_t kind = server.atom("_NET_WM_WINDOW_TYPE");
    const xcb_atom_t desktop = server.atom("_NET_WM_WINDOW_TYPE_DESKTOP");
    const xcb_atom_t dock = server.atom("_NET_WM_WINDOW_TYPE_DOCK");
    WindowsByProcess found;
    for (const xcb_window_t root : server.roots())
        for (const xcb_window_t window : programWindows(server, root)) {
            const std::int32_t process = server.processOf(window);
            if (process <= 0 || !server.contains(window, protocols, question) ||
                server.contains(window, kind, desktop) || server.contains(window, kind, dock))
                continue;
            Closable closable = {root, window};
            for (const xcb_window_t parent : server.numbers(window, XCB_ATOM_WM_TRANSIENT_FOR))
                closable.parent = parent;
            found[process].push_back(closable);
        }
    return found;
}

/// Without the dialogs of other windows among them: to close one is an answer to what it asks.
std::vector<Closable> withoutDialogs(const std::vector<Closable> &windows)
{
    std::vector<Closable> result = windows;
    std::erase_if(result, [&](const Closable &dialog) {
        return std::any_of(windows.begin(), windows.end(), [&](const Closable &other) {
            return other.window == dialog.parent && dialog.window != dialog.parent;
        });
    });
    return result.empty() ? windows : result;
}

/// What stands for the window manager. A number that one which has ended left behind is another program's
/// window by now, or none: only the manager's own names itself.
std::vector<xcb_window_t> managerWindows(const WindowServer &server, xcb_window_t root)
{
    const xcb_atom_t check = server.atom("_NET_SUPPORTING_WM_CHECK");
    std::vector<xcb_window_t> windows = server.numbers(root, check);
    std::erase_if(windows, [&](xcb_window_t window) { return !server.contains(window, check, window); });
    return windows;
}

void askToClose(const WindowServer &server, const Closable &closable)
{
    constexpr std::uint32_t person = 2; // asks, not the program itself
    const xcb_atom_t request = server.atom("_NET_CLOSE_WINDOW");
    if (!managerWindows(server, closable.root).empty() &&
        server.contains(closable.root, server.atom("_NET_SUPPORTED"), request))
        server.send(closable.root, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                    closable.window, request, {XCB_CURRENT_TIME, person, 0, 0, 0});
    else
        server.send(closable.window, XCB_EVENT_MASK_NO_EVENT, closable.window, server.atom("WM_PROTOCOLS"),
                    {server.atom("WM_DELETE_WINDOW"), XCB_CURRENT_TIME, 0, 0, 0});
}

/// The window manager, and whoever takes the items of the panel in.
std::set<std::int32_t> holders(const WindowServer &server)
{
    std::set<std::int32_t> processes;
    int screen = 0;
    for (const xcb_window_t root : server.roots()) {
        std::vector<xcb_window_t> windows = managerWindows(server, root);
        windows.push_back(server.selectionOwner("_NET_SYSTEM_TRAY_S" + std::to_string(screen++)));
        for (const xcb_window_t window : windows)
            processes.insert(window != XCB_NONE ? server.processOf(window) : 0);
    }
    processes.erase(0);
    return processes;
}

} // namespace

int main(int argc, char *argv[])
{
    limitOwnProcess({.time = longest, .processorTime = processorTime, .memoryBytes = addressSpace});
    const WindowServer server;
    if (!server.isThere())
        return EXIT_FAILURE;
    if (argc > 1 && std::string_view(argv[1]) == "holders") {
        for (const std::int32_t process : holders(server))
            std::printf("%d\n", process);
        return EXIT_SUCCESS;
    }
    const WindowsByProcess windows = closableWindows(server);
    if (argc < 2) {
        for (const auto &[process, ignored] : windows)
            std::printf("%d\n", process);
        return EXIT_SUCCESS;
    }
    const auto own = windows.find(std::atoi(argv[1]));
    const auto asked = own == windows.end() ? std::vector<Closable>() : withoutDialogs(own->second);
    for (const Closable &closable : asked)
        askToClose(server, closable);
    server.finish();
    std::printf("%zu\n", asked.size());
    return EXIT_SUCCESS;
}
