#include "platform/linux/SessionHolders.h"

#include "platform/linux/BusCall.h"
#include "platform/linux/KernelFile.h"
#include "platform/linux/ProcessStat.h"
#include "platform/linux/ProgramFolders.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <cstddef>
#include <cstring>

namespace swabby {
namespace {

constexpr std::chrono::milliseconds patience(250);

/// Display servers; compositors and window managers; panels; session managers; the bus and the service
/// manager. In words, each between two blanks.
constexpr std::string_view programs =
    " Xorg X Xwayland Xvnc Xtigervnc "
    "Hyprland awesome bspwm budgie-wm cinnamon compiz cosmic-comp dwm enlightenment fluxbox fvwm "
    "fvwm2 fvwm3 gala gnome-shell herbstluftwm i3 icewm jwm kwin_wayland kwin_wayland_wrapper "
    "kwin_x11 labwc marco metacity muffin mutter mwm niri openbox phoc phosh qtile sway twm wayfire "
    "weston wmaker xfwm4 xmonad "
    "budgie-panel cosmic-panel lxpanel lxqt-panel mate-panel plasmashell polybar stalonetray tint2 "
    "trayer waybar wf-panel-pi xfce4-panel "
    "budgie-session-binary cinnamon-session cinnamon-session-binary cosmic-session "
    "enlightenment_start gdm-wayland-session gdm-x-session gnome-session gnome-session-binary "
    "gnome-session-service icewm-session ksmserver lxqt-session lxsession mate-session plasma_session "
    "sddm-helper startlxqt startplasma-wayland startplasma-x11 startx xfce4-session xinit "
    "dbus-broker dbus-broker-launch dbus-daemon dbus-run-session systemd ";

/// Who listens at the other end of a connection; 0 when that cannot be seen from here.
std::int32_t listenerOf(int socket)
{
    ucred peer = {};
    socklen_t size = sizeof peer;
    return ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 ? peer.pid : 0;
}

std::int32_t listenerAt(const std::string &path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.size() > sizeof address.sun_path)
        return 0;
    std::memcpy(address.sun_path, path.data(), path.size());
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + path.size());
    // A server that hangs takes no connection, and then this fails at once.
    const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const bool isMet = ::connect(socket.number(), reinterpret_cast<const sockaddr *>(&address), size) == 0;
    return isMet ? listenerOf(socket.number()) : 0;
}

std::int32_t parentOf(const std::string &procRoot, std::int32_t pid)
{
    const std::string line = fileText(procRoot + '/' + std::to_string(pid) + "/stat");
    const auto stat = processStatFrom(line);
    return stat ? stat->parentPid : 0;
}

/// The process behind a name on the bus; 0 when nobody has it.
std::int32_t ownerOf(const char *name, sd_bus *bus, Steady::time_point end)
{
    constexpr auto driver = "org.freedesktop.DBus";
    BusMessage question = busQuestion(bus, driver, "/org/freedesktop/DBus", driver,
                                      "GetConnectionUnixProcessID", ServiceStart::never);
    if (!question || sd_bus_message_append(question.get(), "s", name) < 0)
        return 0;
    const BusMessage answer = busAnswer(bus, std::move(question), end);
    std::uint32_t pid = 0;
    return answer && sd_bus_message_read(answer.get(), "u", &pid) > 0 ? static_cast<std::int32_t>(pid) : 0;
}

} // namespace

std::unordered_set<std::int32_t> sessionHolders(const std::string &procRoot, std::int32_t pid,
                                                const SessionServers &servers, const StopToken &stop)
{
    std::unordered_set<std::int32_t> pids;
    for (std::int32_t parent = parentOf(procRoot, pid); parent > 0 && pids.insert(parent).second;)
        parent = parentOf(procRoot, parent);
    for (const std::string &socket : servers.sockets)
        pids.insert(listenerAt(socket));

    const auto end = Steady::now() + patience;
    if (const Bus bus = beginBus(servers.busAddress)) {
        // Often the service manager listens for the bus, so the bus is asked for itself as well.
        pids.insert(listenerOf(sd_bus_get_fd(bus.get())));
        if (becomesReady(bus.get(), end, stop))
            for (const char *name : {"org.freedesktop.DBus", "org.kde.StatusNotifierWatcher"})
                pids.insert(ownerOf(name, bus.get(), end));
    }
    pids.erase(0);
    return pids;
}

bool holdsSessions(std::string_view path)
{
    for (const std::string_view temporary : {"/tmp/", "/var/tmp/", "/dev/shm/"})
        if (path.starts_with(temporary))
            return false;
    const std::string_view name = fileName(path);
    const bool isWord = !name.empty() && name.find(' ') == std::string_view::npos;
    return isWord && programs.find(' ' + std::string(name) + ' ') != std::string_view::npos;
}

} // namespace swabby
