#include "platform/ThisComputer.h"
#include "platform/Utf8.h"
#include "platform/linux/LinuxApplicationSource.h"
#include "platform/linux/LinuxBootClock.h"
#include "platform/linux/LinuxCleanupPlaces.h"
#include "platform/linux/LinuxDisposal.h"
#include "platform/linux/LinuxKernelCounters.h"
#include "platform/linux/LinuxLoginService.h"
#include "platform/linux/LinuxNotifier.h"
#include "platform/linux/LinuxPowerSupply.h"
#include "platform/linux/LinuxProcessControl.h"
#include "platform/linux/LinuxProcessSurveyor.h"
#include "platform/linux/LinuxProgramIcons.h"
#include "platform/linux/LinuxRunningApplications.h"
#include "platform/linux/LinuxSecretStore.h"
#include "platform/linux/LinuxStartupControl.h"
#include "platform/linux/LinuxStartupSource.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/posix/FileSettingsStore.h"
#include "platform/posix/PosixShell.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>

namespace swabby {

namespace {

constexpr auto procRoot = "/proc";
constexpr auto sysRoot = "/sys";

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

std::string sessionBusAddress()
{
    return variable("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + runtimeFolder() + "/bus");
}

std::string homeFolder()
{
    passwd entry = {};
    passwd *found = nullptr;
    std::array<char, 4096> buffer;
    ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found);
    return folderVariable("HOME", found && found->pw_dir ? found->pw_dir : "/");
}

/// The program of that name beside the one that runs; the path an AppImage was started by, since what lies
/// inside is gone with it.
std::string ownProgram(const std::string &name)
{
    const std::string image = variable("APPIMAGE", {});
    if (image.starts_with('/'))
        return image;
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).replace_filename(name).string();
}

double steadySeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::vector<std::string> withEnding(std::vector<std::string> list, const std::string &ending)
{
    for (std::string &folder : list)
        folder += ending;
    return list;
}

} // namespace

void prepareForThisComputer()
{
    // Without an address, libraries start a bus of their own, with this program's whole environment.
    ::setenv("DBUS_SESSION_BUS_ADDRESS", sessionBusAddress().c_str(), 1);
}

QLocale localeOfTimes()
{
    for (const char *variable : {"LC_ALL", "LC_TIME", "LANG"})
        if (const char *name = std::getenv(variable); name != nullptr && *name != '\0')
            return QLocale(QString::fromLatin1(name));
    return QLocale::c();
}

std::shared_ptr<Machine> makeThisComputer()
{
    auto machine = std::make_shared<Machine>();
    const StopToken stop = machine->stop.token();
    const std::string home = homeFolder();
    const std::string dataHome = folderVariable("XDG_DATA_HOME", home + "/.local/share");
    const std::string configHome = folderVariable("XDG_CONFIG_HOME", home + "/.config");

    machine->places.home = textOf(home);
    machine->places.applicationData = textOf(dataHome + "/Swabby");
    // The two must differ: each is locked as a whole while something in it is kept or changed.
    const std::string preferences = configHome + (configHome == dataHome ? "/Swabby/Preferences" : "/Swabby");
    machine->places.preferences = textOf(preferences);
    machine->places.userId = ::getuid();
    machine->ownProcessId = ::getpid();
    machine->clock = std::make_unique<SystemClock>();
    machine->settings = std::make_unique<FileSettingsStore>(textOf(preferences + "/settings.json"));
    machine->shell = std::make_unique<PosixShell>(stop);
    machine->dock = std::make_unique<NoDockPresence>();
    machine->disposal = std::make_unique<LinuxDisposal>(dataHome, *machine->clock);
    machine->kernel =
        std::make_unique<LinuxKernelCounters>(LinuxKernelCounters::Roots{procRoot, sysRoot, "/"});
    machine->power = std::make_unique<LinuxPowerSupply>(std::string(sysRoot) + "/class/power_supply");
    machine->boot = std::make_unique<LinuxBootClock>(procRoot);
    machine->processControl = std::make_unique<LinuxProcessControl>(procRoot);

    const ProgramFolders programs = {
        {},
        home,
        folders(variable("PATH", {}), {"/usr/local/bin", "/usr/bin", "/bin", "/usr/games", "/snap/bin"})};
    const std::string dataFolders = dataHome + ':' + variable("XDG_DATA_DIRS", {});
    const std::vector<std::string> sharedData =
        folders(dataFolders, {"/usr/local/share", "/usr/share", dataHome + "/flatpak/exports/share",
                              "/var/lib/flatpak/exports/share", "/var/lib/snapd/desktop"});
    const std::vector<std::string> entryFolders = withEnding(sharedData, "/applications");
    std::vector<std::string> themeFolders = withEnding(sharedData, "/icons");
    themeFolders.insert(themeFolders.begin(), home + "/.icons");
    machine->icons = std::make_unique<LinuxProgramIcons>(
        DesktopApplications(entryFolders, programs),
        IconThemes::Folders{std::move(themeFolders), withEnding(sharedData, "/pixmaps")});
    const auto table =
        std::make_shared<ProcessTable>(ProcessTable::Sources{procRoot, steadySeconds, descriptorBudget()},
                                       ProgramFinder(procRoot, DesktopApplications(entryFolders, programs)));
    machine->processes = std::make_unique<LinuxProcessSurveyor>(
        LinuxProcessSurveyor::Sources{procRoot, table, steadySeconds, tcpSocketBytes, stop});

    const UserFolders userFolders = {.home = home,
                                     .cache = folderVariable("XDG_CACHE_HOME", home + "/.cache"),
                                     .config = configHome,
                                     .data = dataHome,
                                     .state = folderVariable("XDG_STATE_HOME", home + "/.local/state")};
    machine->cleanup = linuxCleanupPlaces(userFolders);
    const LinuxApplicationSource applications(userFolders, programs, QStringLiteral("com.swabby.app"));
    machine->applications = std::make_unique<LinuxApplicationSource>(applications);

    const auto pidRunning = [table](const std::string &program, const std::string &folder) {
        return table->pidRunning(program, folder);
    };
    machine->runningApplications = std::make_unique<LinuxRunningApplications>(
        applications, LinuxRunningApplications::Sources{[table] { table->list(); }, pidRunning});

    LinuxStartupSource::Sources startup;
    startup.autostart = {configHome + "/autostart",
                         withEnding(folders(variable("XDG_CONFIG_DIRS", {}), {"/etc/xdg"}), "/autostart"),
                         variable("XDG_CURRENT_DESKTOP", {})};
    startup.units = {configHome + "/systemd/user", "/etc/systemd/user", "/etc/systemd/system"};
    startup.programs = programs;
    // The folder tells that a service manager of this kind runs this machine.
    const bool hasManager = isThere("/run/systemd/system");
    startup.systemBus =
        variable("DBUS_SYSTEM_BUS_ADDRESS", hasManager ? "unix:path=/run/dbus/system_bus_socket" : "");
    startup.userBus = sessionBusAddress();
    startup.pidRunning = pidRunning;
    startup.stop = stop;
    machine->startupControl = std::make_unique<LinuxStartupControl>(
        LinuxStartupControl::Folders{startup.autostart.user, startup.autostart.system, startup.units.user,
                                     startup.userBus},
        stop);
    machine->login = std::make_unique<LinuxLoginService>(startup.autostart.user, startup.autostart.system,
                                                         ownProgram("swabby"));
    const std::string sessionBus = sessionBusAddress();
    machine->notifier = std::make_unique<LinuxNotifier>(sessionBus);
    machine->workspace = std::make_unique<LinuxWorkspace>(
        LinuxWorkspace::Sources{sessionBus, startup.autostart.desktops, programs.searched,
                                textOf(startup.autostart.user)},
        *machine->shell, stop);
    machine->secrets = std::make_unique<LinuxSecretStore>(sessionBus, LinuxSecretStore::Patience(), stop);
    machine->startup = std::make_unique<LinuxStartupSource>(std::move(startup));
    return machine;
}

} // namespace swabby
