#include "platform/ThisComputer.h"
#include "platform/mac/MacDockPresence.h"
#include "platform/mac/MacKernelCounters.h"
#include "platform/mac/MacLoginService.h"
#include "platform/mac/MacNotifier.h"
#include "platform/mac/MacPowerSupply.h"
#include "platform/mac/MacRunningApplications.h"
#include "platform/mac/MacSecretStore.h"
#include "platform/mac/MacWorkspace.h"
#include "platform/mac/SystemTrash.h"
#include "platform/macparts/DefaultsStore.h"
#include "platform/macparts/MacDisposal.h"
#include "platform/macparts/MacProcessControl.h"
#include "platform/macparts/ToolEnvironment.h"
#include "platform/mactools/MacApplicationSource.h"
#include "platform/mactools/MacBootClock.h"
#include "platform/mactools/MacCleanupPlaces.h"
#include "platform/mactools/MacProcessSurveyor.h"
#include "platform/mactools/MacProgramIcons.h"
#include "platform/mactools/MacStartupControl.h"
#include "platform/mactools/MacStartupSource.h"
#include "platform/posix/PosixShell.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <unistd.h>

namespace swabby {
namespace {

void addPlaces(Machine &machine)
{
    const QString home = QDir::homePath();
    const QString own = home + QStringLiteral("/Library/Application Support/Swabby");
    machine.places = {.home = home,
                      .root = {},
                      .applicationData = own,
                      .preferences = home + QStringLiteral("/Library/Preferences"),
                      .windowPlaces = own + QStringLiteral("/windows.json"),
                      .userId = ::getuid()};
    machine.cleanup = macCleanupPlaces(QFile::encodeName(home).toStdString(), {});
    machine.settings = std::make_unique<DefaultsStore>(openUserDefaults, machine.places.preferences);
    machine.disposal =
        std::make_unique<MacDisposal>(machine.cleanup.trash, moveToSystemTrash, *machine.permissions);
}

void addFigures(Machine &machine)
{
    Shell &shell = *machine.shell;
    machine.kernel = std::make_unique<MacKernelCounters>();
    machine.processes = std::make_unique<MacProcessSurveyor>(shell);
    machine.power = std::make_unique<MacPowerSupply>(shell);
    machine.boot = std::make_unique<MacBootClock>(shell);
    machine.startup = std::make_unique<MacStartupSource>(shell, machine.places, *machine.permissions);
    machine.startupControl = std::make_unique<MacStartupControl>(shell, machine.places);
}

void addPrograms(Machine &machine)
{
    machine.processControl = std::make_unique<MacProcessControl>(*machine.shell);
    machine.applications = std::make_unique<MacApplicationSource>(machine.cleanup.root, machine.cleanup.home,
                                                                  QStringLiteral("com.swabby.app"));
    machine.icons = std::make_unique<MacProgramIcons>(machine.cleanup.root, machine.cleanup.home);
    machine.runningApplications = std::make_unique<MacRunningApplications>(*machine.processControl);
}

void addDesktop(Machine &machine)
{
    machine.dock = std::make_unique<MacDockPresence>();
    machine.notifier = std::make_unique<MacNotifier>(*machine.permissions);
    machine.secrets = std::make_unique<MacSecretStore>(MacSecretStore::Patience(), machine.stop.token());
    machine.workspace = std::make_unique<MacWorkspace>();
    machine.login = std::make_unique<MacLoginService>();
}

} // namespace

void prepareForThisComputer()
{
    prepareEnvironmentForTools();
}

QLocale localeOfTimes()
{
    return QLocale::system();
}

MachineWords wordsOfThisComputer()
{
    return {};
}

std::shared_ptr<Machine> makeThisComputer()
{
    const auto machine = std::make_shared<Machine>();
    machine->ownProcessId = ::getpid();
    machine->clock = std::make_unique<SystemClock>();
    machine->shell = std::make_unique<PosixShell>(machine->stop.token());
    addPlaces(*machine);
    addFigures(*machine);
    addPrograms(*machine);
    addDesktop(*machine);
    return machine;
}

} // namespace swabby
