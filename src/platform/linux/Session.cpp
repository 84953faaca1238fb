#include "platform/linux/Session.h"

#include "platform/TextScan.h"
#include "platform/linux/KernelFile.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>

namespace swabby {
namespace {

std::string variable(const char *name, const std::string &otherwise)
{
    const char *value = ::getenv(name);
    return value && *value ? value : otherwise;
}

/// As the XDG base directories want it: a folder that is no absolute path counts as unset.
std::string folderVariable(const char *name, const std::string &otherwise)
{
    std::string folder = variable(name, otherwise);
    if (!folder.starts_with('/'))
        folder = otherwise;
    while (folder.size() > 1 && folder.ends_with('/'))
        folder.pop_back();
    return folder;
}

/// The absolute folders of a colon-separated list, then those given, each once.
std::vector<std::string> folders(std::string_view list, std::initializer_list<std::string> more)
{
    std::vector<std::string> result;
    const auto add = [&result](std::string folder) {
        while (folder.size() > 1 && folder.ends_with('/'))
            folder.pop_back();
        if (folder.starts_with('/') && std::find(result.begin(), result.end(), folder) == result.end())
            result.push_back(std::move(folder));
    };
    for (const std::string_view folder : piecesOf(list, ':'))
        add(std::string(folder));
    std::for_each(more.begin(), more.end(), add);
    return result;
}

std::string runtimeFolder()
{
    return folderVariable("XDG_RUNTIME_DIR", "/run/user/" + std::to_string(::getuid()));
}

std::string busAddress()
{
    return variable("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + runtimeFolder() + "/bus");
}

/// Where the display server listens; empty when it is another computer's.
std::string displaySocket()
{
    const std::string display = variable("DISPLAY", ":0");
    const std::size_t colon = display.rfind(':');
    if (colon != 0 && display.substr(0, colon) != "unix")
        return {};
    return "/tmp/.X11-unix/X" + display.substr(colon + 1, display.find('.', colon) - colon - 1);
}

/// As the libraries of the display server and the compositor find them, also where the environment is silent.
SessionServers sessionServers()
{
    SessionServers servers = {{runtimeFolder() + "/systemd/private"}, busAddress()};
    const std::string compositor = variable("WAYLAND_DISPLAY", {});
    const std::string socket = compositor.empty() ? "wayland-0" : compositor;
    servers.sockets.push_back(socket.starts_with('/') ? socket : runtimeFolder() + '/' + socket);
    // A compositor listens there itself, and would start an X server for whoever calls.
    if (const std::string display = displaySocket(); compositor.empty() && !display.empty()) {
        servers.sockets.push_back(display);
        servers.sockets.push_back('\0' + display);
    }
    return servers;
}

std::string homeFolder()
{
    passwd entry = {};
    passwd *found = nullptr;
    std::array<char, 4096> buffer;
    ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found);
    return folderVariable("HOME", found && found->pw_dir ? found->pw_dir : "/");
}

std::string ownProgram()
{
    const std::string image = variable("APPIMAGE", {});
    if (image.starts_with('/'))
        return image;
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).replace_filename("swabby").string();
}

} // namespace

std::vector<std::string> withEnding(std::vector<std::string> list, const std::string &ending)
{
    for (std::string &folder : list)
        folder += ending;
    return list;
}

Session sessionFromEnvironment()
{
    const std::string home = homeFolder();
    const std::string data = folderVariable("XDG_DATA_HOME", home + "/.local/share");
    const std::string config = folderVariable("XDG_CONFIG_HOME", home + "/.config");
    // The folder tells that a service manager of this kind runs this machine.
    const bool hasManager = isThere("/run/systemd/system");
    return {.folders = {.home = home,
                        .cache = folderVariable("XDG_CACHE_HOME", home + "/.cache"),
                        .config = config,
                        .data = data,
                        .state = folderVariable("XDG_STATE_HOME", home + "/.local/state"),
                        .cargo = folderVariable("CARGO_HOME", {}),
                        .gradle = folderVariable("GRADLE_USER_HOME", {})},
            .programs = {{},
                         home,
                         folders(variable("PATH", {}),
                                 {"/usr/local/bin", "/usr/bin", "/bin", "/usr/games", "/snap/bin"})},
            .sharedData = folders(data + ':' + variable("XDG_DATA_DIRS", {}),
                                  {"/usr/local/share", "/usr/share", data + "/flatpak/exports/share",
                                   "/var/lib/flatpak/exports/share", "/var/lib/snapd/desktop"}),
            .autostart = {config + "/autostart",
                          withEnding(folders(variable("XDG_CONFIG_DIRS", {}), {"/etc/xdg"}), "/autostart"),
                          variable("XDG_CURRENT_DESKTOP", {})},
            .busAddress = busAddress(),
            .display = variable("DISPLAY", {}),
            .displaySocket = displaySocket(),
            .compositor = variable("WAYLAND_DISPLAY", {}),
            .servers = sessionServers(),
            .systemBusAddress = variable("DBUS_SYSTEM_BUS_ADDRESS",
                                         hasManager ? "unix:path=/run/dbus/system_bus_socket" : ""),
            .containers = {variable("DOCKER_HOST", {}), variable("DOCKER_CONTEXT", {}),
                           folderVariable("DOCKER_CONFIG", home + "/.docker")},
            .ownProgram = ownProgram()};
}

} // namespace swabby
