#include "platform/ThisComputer.h"
#include "platform/Utf8.h"
#include "platform/linux/CacheFolder.h"
#include "platform/linux/KernelFile.h"
#include "platform/linux/LinuxApplicationSource.h"
#include "platform/linux/LinuxBootClock.h"
#include "platform/linux/LinuxDisposal.h"
#include "platform/linux/LinuxKernelCounters.h"
#include "platform/linux/LinuxLoginService.h"
#include "platform/linux/LinuxNotifier.h"
#include "platform/linux/LinuxPowerSupply.h"
#include "platform/linux/LinuxProcessControl.h"
#include "platform/linux/LinuxProcessSurveyor.h"
#include "platform/linux/LinuxProgramIcons.h"
#include "platform/linux/LinuxProgramOrigins.h"
#include "platform/linux/LinuxRunningApplications.h"
#include "platform/linux/LinuxSecretStore.h"
#include "platform/linux/LinuxShell.h"
#include "platform/linux/LinuxStartupControl.h"
#include "platform/linux/LinuxStartupSource.h"
#include "platform/linux/LinuxWords.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/ProgramWindows.h"
#include "platform/linux/QuitActions.h"
#include "platform/linux/Session.h"
#include "platform/posix/FileSettingsStore.h"
#include "platform/posix/LateLibrary.h"

#include <unistd.h>

#include <chrono>
#include <cstdlib>

namespace swabby {
namespace {

constexpr auto procRoot = "/proc";
constexpr auto sysRoot = "/sys";

double steadySeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

using PidRunning = std::function<std::int32_t(const std::string &program, const std::string &folder)>;

void addPlaces(Machine &machine, const Session &session)
{
    const UserFolders &folders = session.folders;
    machine.places.home = textOf(folders.home.string());
    machine.places.applicationData = textOf(folders.data.string() + "/Swabby");
    // The two must differ: each is locked as a whole while something in it is kept or changed.
    const std::string preferences =
        folders.config.string() + (folders.config == folders.data ? "/Swabby/Preferences" : "/Swabby");
    machine.places.preferences = textOf(preferences);
    machine.places.windowPlaces = textOf(folders.state.string() + "/Swabby/windows.json");
    machine.places.userId = ::getuid();
    machine.cleanup = linuxCleanupPlaces(folders);
    machine.cleanup.containers = session.containers;
    machine.settings = std::make_unique<FileSettingsStore>(textOf(preferences + "/settings.json"));
    machine.disposal = std::make_unique<LinuxDisposal>(folders.data, *machine.clock);
}

void addFigures(Machine &machine, const Session &session)
{
    machine.kernel = std::make_unique<LinuxKernelCounters>(
        LinuxKernelCounters::Roots{procRoot, sysRoot, {"/", session.folders.home.string()}});
    auto power = std::make_unique<LinuxPowerSupply>(std::string(sysRoot) + "/class/power_supply");
    machine.mayHaveBattery = power->hasBattery();
    machine.power = std::move(power);
    machine.boot = std::make_unique<LinuxBootClock>(procRoot);
    machine.refreshesUntilReal = 1;
}

auto sessionHoldersOf(Machine &machine, const Session &session, const ProgramWindows &windows)
{
    const auto desktop = std::make_shared<DesktopHolders>(windows, *machine.processControl);
    // Where there is a compositor it is found without, and may start an X server for whoever looks for one.
    const bool looksAtWindows = session.compositor.empty();
    return [pid = machine.ownProcessId, servers = session.servers, desktop, looksAtWindows,
            stop = machine.stop.token()] {
        auto pids = sessionHolders(procRoot, pid, servers, stop);
        if (looksAtWindows)
            pids.merge(desktop->pids());
        return pids;
    };
}

LinuxRunningApplications::Sources waysToQuit(Machine &machine, const Session &session,
                                             const ProgramWindows &windows)
{
    const auto offers = [&control = *machine.processControl, bus = session.busAddress,
                         stop = machine.stop.token()](QuitAction what, const ProcessIdentity &process) {
        return offersQuit(what, bus, process, control, stop);
    };
    LinuxRunningApplications::Sources ways;
    ways.canAsk = [windows, offers](const ProcessIdentity &process) {
        return windows.askable().contains(process.pid) || offers(QuitAction::look, process);
    };
    ways.ask = [windows, offers](const ProcessIdentity &process) {
        return windows.askToClose(process.pid) || offers(QuitAction::take, process);
    };
    return ways;
}

/// Gives how to find out which process runs a program.
PidRunning addPrograms(Machine &machine, const Session &session)
{
    const std::vector<std::string> entryFolders = withEnding(session.sharedData, "/applications");
    const DesktopApplications entries(entryFolders, session.programs);
    std::vector<std::string> themeFolders = withEnding(session.sharedData, "/icons");
    themeFolders.insert(themeFolders.begin(), session.folders.home.string() + "/.icons");
    machine.icons = std::make_unique<LinuxProgramIcons>(
        DesktopApplications(entries),
        IconThemes::Folders{std::move(themeFolders), withEnding(session.sharedData, "/pixmaps")});

    machine.origins = std::make_unique<LinuxProgramOrigins>(procRoot, entries, *machine.shell);

    const auto table =
        std::make_shared<ProcessTable>(ProcessTable::Sources{procRoot, steadySeconds, descriptorBudget()},
                                       ProgramFinder(procRoot, DesktopApplications(entries)));
    const PidRunning pidRunning = [table](const std::string &program, const std::string &folder) {
        return table->pidRunning(program, folder);
    };
    machine.processControl = std::make_unique<LinuxProcessControl>(procRoot);
    const auto isOpenForCalls = [isOnDemand = !session.compositor.empty(), socket = session.displaySocket] {
        return !isOnDemand || socket.empty() || isInUse(socket, fileText("/proc/net/unix"));
    };
    const ProgramWindows windows(*machine.shell, ownFolder() / windowsProgram, session.display,
                                 isOpenForCalls);
    machine.processes = std::make_unique<LinuxProcessSurveyor>(
        LinuxProcessSurveyor::Sources{procRoot, table, steadySeconds, tcpSocketBytes, machine.stop.token(),
                                      sessionHoldersOf(machine, session, windows)});
    const LinuxApplicationSource applications(
        session.folders, session.programs, entryFolders,
        {"com.swabby.app", "swabby", {session.ownProgram, linkTarget("/proc/self/exe")}});
    machine.applications = std::make_unique<LinuxApplicationSource>(applications);
    LinuxRunningApplications::Sources running = waysToQuit(machine, session, windows);
    running.listProcesses = [table] { table->list(); };
    running.pidRunning = pidRunning;
    machine.runningApplications = std::make_unique<LinuxRunningApplications>(applications, running);
    return pidRunning;
}

void addStartup(Machine &machine, const Session &session, const PidRunning &pidRunning)
{
    const AutostartFolders &autostart = session.autostart;
    const UnitFolders units = {session.folders.config.string() + "/systemd/user", "/etc/systemd/user",
                               "/etc/systemd/system"};
    machine.startup = std::make_unique<LinuxStartupSource>(
        LinuxStartupSource::Sources{.autostart = autostart,
                                    .units = units,
                                    .programs = session.programs,
                                    .ownProgram = session.ownProgram,
                                    .systemBus = session.systemBusAddress,
                                    .userBus = session.busAddress,
                                    .pidRunning = pidRunning,
                                    .stop = machine.stop.token()});
    machine.startupControl = std::make_unique<LinuxStartupControl>(
        LinuxStartupControl::Folders{autostart.user, autostart.system, units.user, session.busAddress,
                                     session.ownProgram, session.folders.home.string(), autostart.desktops},
        machine.stop.token());
    machine.login = std::make_unique<LinuxLoginService>(autostart.user, autostart.system, session.ownProgram,
                                                        autostart.desktops);
}

void addDesktop(Machine &machine, const Session &session)
{
    machine.dock = std::make_unique<NoDockPresence>();
    machine.notifier = std::make_unique<LinuxNotifier>(session.busAddress);
    machine.workspace = std::make_unique<LinuxWorkspace>(
        LinuxWorkspace::Sources{session.busAddress, session.autostart.desktops, session.programs.searched,
                                withEnding(session.sharedData, "/applications"),
                                textOf(session.autostart.user)},
        *machine.shell, machine.stop.token());
    machine.secrets = std::make_unique<LinuxSecretStore>(session.busAddress, LinuxSecretStore::Patience(),
                                                         machine.stop.token());
}

MachineWords wordsIn(const Session &session)
{
    MachineWords words = linuxWords(fileText("/etc/os-release"), session.autostart.desktops);
    words.processors = static_cast<int>(::sysconf(_SC_NPROCESSORS_ONLN));
    return words;
}

} // namespace

void prepareForThisComputer()
{
    // Without an address, libraries start a bus of their own, with this program's whole environment.
    ::setenv("DBUS_SESSION_BUS_ADDRESS", sessionFromEnvironment().busAddress.c_str(), 1);
}

QLocale localeOfTimes()
{
    for (const char *variable : {"LC_ALL", "LC_TIME", "LANG"})
        if (const char *name = std::getenv(variable); name != nullptr && *name != '\0')
            return QLocale(QString::fromLatin1(name));
    return QLocale::c();
}

MachineWords wordsOfThisComputer()
{
    return wordsIn(sessionFromEnvironment());
}

std::shared_ptr<Machine> makeThisComputer()
{
    Session session = sessionFromEnvironment();
    session.folders.cache = believedCacheFolder(session.folders);
    const auto machine = std::make_shared<Machine>();
    machine->ownProcessId = ::getpid();
    machine->clock = std::make_unique<SystemClock>();
    machine->shell = std::make_unique<LinuxShell>(machine->stop.token());
    addPlaces(*machine, session);
    machine->words = wordsIn(session);
    addFigures(*machine, session);
    addStartup(*machine, session, addPrograms(*machine, session));
    addDesktop(*machine, session);
    return machine;
}

} // namespace swabby
