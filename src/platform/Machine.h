#pragma once

#include "platform/ApplicationSource.h"
#include "platform/BootClock.h"
#include "platform/CleanupPlaces.h"
#include "platform/Clock.h"
#include "platform/Disposal.h"
#include "platform/DockPresence.h"
#include "platform/KernelCounters.h"
#include "platform/LoginService.h"
#include "platform/MachineWords.h"
#include "platform/Notifier.h"
#include "platform/Permissions.h"
#include "platform/Places.h"
#include "platform/PowerSupply.h"
#include "platform/ProcessControl.h"
#include "platform/ProcessSurvey.h"
#include "platform/ProgramIcons.h"
#include "platform/ProgramOrigins.h"
#include "platform/RunningApplications.h"
#include "platform/SecretStore.h"
#include "platform/SettingsStore.h"
#include "platform/Shell.h"
#include "platform/StartupControl.h"
#include "platform/StartupSource.h"
#include "platform/StopToken.h"
#include "platform/Workspace.h"

#include <memory>

namespace swabby {

/// The computer Swabby looks after: small services, one implementation each for every kind of machine.
/// What a system lacks is a null implementation, never an `if` at the caller. Shared with background
/// work, so every service may be called from any thread unless its header says otherwise.
struct Machine {
    Places places;
    CleanupPlaces cleanup;
    MachineWords words;
    std::int32_t ownProcessId = 0;
    bool mayHaveBattery = true; ///< whether what is about one is offered
    /// Refreshes until figures over an interval are real ones.
    int refreshesUntilReal = 2;
    /// Requested when the program ends: every wait and every tool of this machine ends with it.
    StopSource stop;

    std::unique_ptr<Permissions> permissions = std::make_unique<Permissions>();
    std::unique_ptr<Clock> clock;
    std::unique_ptr<SettingsStore> settings;
    std::unique_ptr<Shell> shell;
    std::unique_ptr<KernelCounters> kernel;
    std::unique_ptr<ProcessSurveyor> processes;
    std::unique_ptr<PowerSupply> power;
    std::unique_ptr<BootClock> boot;
    std::unique_ptr<StartupSource> startup;
    std::unique_ptr<StartupControl> startupControl;
    std::unique_ptr<ProcessControl> processControl;
    std::unique_ptr<ApplicationSource> applications;
    std::unique_ptr<ProgramIcons> icons;
    std::unique_ptr<ProgramOrigins> origins = std::make_unique<ProgramOrigins>();
    std::unique_ptr<RunningApplications> runningApplications;
    std::unique_ptr<DockPresence> dock;
    std::unique_ptr<Notifier> notifier;
    std::unique_ptr<SecretStore> secrets;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<LoginService> login;
    std::unique_ptr<Disposal> disposal; ///< set by every kind of machine
};

} // namespace swabby
