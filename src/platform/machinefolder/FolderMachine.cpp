#include "platform/machinefolder/FolderMachine.h"

#include "platform/machinefolder/FolderClock.h"
#include "platform/machinefolder/FolderDisposal.h"
#include "platform/machinefolder/FolderProcessControl.h"
#include "platform/machinefolder/FolderRunningApplications.h"
#include "platform/machinefolder/FolderServices.h"
#include "platform/machinefolder/FolderShell.h"
#include "platform/machinefolder/MachineDescription.h"
#include "platform/machinefolder/OwnFiles.h"
#include "platform/mactools/HardwareReport.h"
#include "platform/mactools/MacApplicationSource.h"
#include "platform/mactools/MacBootClock.h"
#include "platform/mactools/MacCleanupPlaces.h"
#include "platform/mactools/MacProcessSurveyor.h"
#include "platform/mactools/MacProgramIcons.h"
#include "platform/mactools/MacStartupControl.h"
#include "platform/mactools/MacStartupSource.h"
#include "platform/posix/FileSettingsStore.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <unistd.h>

namespace swabby {
namespace {

class FolderKernel final : public KernelCounters {
public:
    explicit FolderKernel(std::shared_ptr<MachineDescription> description)
        : m_description(std::move(description))
    {
    }

    std::optional<CpuTicks> cpuTicks() override { return m_description->nextCpuTicks(); }
    std::optional<CpuTicks> cpuTicksAtStart() override { return m_description->cpuTicksAtStart(); }
    std::optional<MemoryPages> memoryPages() override { return m_description->memoryPages(); }
    std::uint64_t physicalMemory() override { return m_description->physicalMemory(); }
    std::uint64_t swapUsedBytes() override { return m_description->swapUsedBytes(); }
    VolumeCapacity startupVolume() override { return m_description->disk(); }
    ThermalState thermalState() override { return m_description->nextThermalState(); }

private:
    std::shared_ptr<MachineDescription> m_description;
};

class FolderPowerSupply final : public PowerSupply {
public:
    FolderPowerSupply(std::shared_ptr<MachineDescription> description, Shell &shell)
        : m_description(std::move(description)), m_shell(shell)
    {
    }

    std::optional<PowerSource> firstSource() override { return m_description->powerSource(); }
    BatteryHealth healthAndCycles() override { return readHardwareReport(m_shell); }

private:
    std::shared_ptr<MachineDescription> m_description;
    Shell &m_shell;
};

class FolderDockPresence final : public DockPresence {
public:
    explicit FolderDockPresence(const EventLog &events) : m_events(events) {}

    void setActivationPolicy(ActivationPolicy policy) override
    {
        m_events.write(QStringLiteral("activationPolicy"), policy == ActivationPolicy::regular
                                                               ? QStringLiteral("regular")
                                                               : QStringLiteral("accessory"));
    }

private:
    const EventLog &m_events;
};

std::filesystem::path pathOf(const QString &name)
{
    return QFile::encodeName(name).toStdString();
}

/// Settings to which only a link leads, perhaps out of the folder: nobody knows them, and nothing is stored.
class LinkedSettings final : public SettingsStore {
public:
    explicit LinkedSettings(QString place) : m_place(std::move(place)) {}

    Reading read(const QString & /*key*/) const override
    {
        return {QJsonValue::Undefined, QStringLiteral("%1 cannot be read (a link leads there)").arg(m_place)};
    }
    bool change(const QString & /*key*/, const Edit & /*edit*/) override { return false; }
    QString place() const override { return m_place; }

private:
    const QString m_place;
};

std::unique_ptr<SettingsStore> settingsIn(const QString &folder)
{
    const QString below = QStringLiteral("home/Library/Preferences/com.swabby.app.json");
    const QString path = folder + QLatin1Char('/') + below;
    if (!isWithoutLinks(pathOf(folder), pathOf(below)))
        return std::make_unique<LinkedSettings>(path);
    return std::make_unique<FileSettingsStore>(path);
}

/// Where Swabby keeps the history and what can be put back; empty when a link would lead there.
QString applicationDataIn(const QString &folder)
{
    const QString below = QStringLiteral("home/Library/Application Support/Swabby");
    for (const char *file : {"history.json", "put-back.json"})
        if (!isWithoutLinks(pathOf(folder), pathOf(below) / file))
            return {};
    return folder + QLatin1Char('/') + below;
}

/// A Mac's, and what the description says of another kind of machine.
CleanupPlaces placesIn(const MachineDescription &description, const std::filesystem::path &home,
                       const std::filesystem::path &root)
{
    CleanupPlaces places = macCleanupPlaces(home, root);
    if (const std::filesystem::path caches = description.cachesFolder(); !caches.empty())
        places.cachesRoot = home / caches;
    for (KnownCache cache : description.knownCaches()) {
        cache.path = home / cache.path;
        cache.foundIn = cache.path.parent_path();
        places.offersFoldersOfKnown = false;
        places.knownCaches.push_back(std::move(cache));
    }
    return places;
}

// The log stands as long as every service that writes to it.
struct FolderMachine : Machine {
    explicit FolderMachine(const QString &folder) : events(folder + QStringLiteral("/events.jsonl")) {}

    EventLog events;
};

} // namespace

std::shared_ptr<Machine> makeFolderMachine(const MachineFolder &given, QString *problem)
{
    MachineFolder tools = given;
    const QString folder = tools.path = QDir(given.path).absolutePath();
    const std::shared_ptr<MachineDescription> description = MachineDescription::read(folder, problem);
    if (!description)
        return nullptr;

    const auto machine = std::make_shared<FolderMachine>(folder);
    const QString home = folder + QStringLiteral("/home");
    machine->places = {.home = home,
                       .root = folder + QStringLiteral("/root"),
                       .applicationData = applicationDataIn(folder),
                       .preferences = home + QStringLiteral("/Library/Preferences"),
                       .windowPlaces = {}, // a window is nothing of the machine's
                       .userId = description->userId()};
    machine->ownProcessId = description->ownProcessId().value_or(::getpid());
    machine->refreshesUntilReal = 1;
    machine->permissions->alwaysRefuse(description->notAllowed());
    if (const auto now = description->now())
        machine->clock = std::make_unique<FolderClock>(*now);
    else
        machine->clock = std::make_unique<SystemClock>();
    machine->settings = settingsIn(folder);
    machine->shell =
        std::make_unique<FolderShell>(tools, *machine->clock, machine->events, machine->stop.token());
    machine->kernel = std::make_unique<FolderKernel>(description);
    machine->processes = std::make_unique<MacProcessSurveyor>(*machine->shell);
    machine->power = std::make_unique<FolderPowerSupply>(description, *machine->shell);
    machine->boot = std::make_unique<MacBootClock>(*machine->shell);
    machine->processControl = std::make_unique<FolderProcessControl>(description->unsignalablePids(),
                                                                     *machine->boot, machine->events);
    machine->startup =
        std::make_unique<MacStartupSource>(*machine->shell, machine->places, *machine->permissions);
    machine->startupControl = std::make_unique<MacStartupControl>(*machine->shell, machine->places);
    machine->cleanup = placesIn(*description, pathOf(home), pathOf(machine->places.root));
    machine->applications = std::make_unique<MacApplicationSource>(
        machine->cleanup.root, machine->cleanup.home, description->bundleId());
    machine->icons = std::make_unique<MacProgramIcons>(machine->cleanup.root, machine->cleanup.home);
    machine->runningApplications =
        std::make_unique<FolderRunningApplications>(description->runningApplications(), machine->events);
    machine->dock = std::make_unique<FolderDockPresence>(machine->events);
    machine->notifier = std::make_unique<FolderNotifier>(machine->events, *machine->permissions);
    machine->secrets = std::make_unique<FolderSecretStore>(folder + QStringLiteral("/keychain.json"));
    machine->workspace = std::make_unique<FolderWorkspace>(machine->events);
    machine->login =
        std::make_unique<FolderLoginService>(folder + QStringLiteral("/opens-at-login"), machine->events);
    machine->disposal =
        std::make_unique<FolderDisposal>(QFile::encodeName(folder).toStdString(), description->trashRefuses(),
                                         machine->events, *machine->permissions);
    return machine;
}

} // namespace swabby
