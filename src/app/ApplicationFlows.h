#pragma once

#include "ai/CloudAI.h"
#include "cleanup/Scans.h"
#include "cleanup/flows/CleanupFlow.h"
#include "cleanup/flows/QuitFlow.h"
#include "health/flows/NotificationFlow.h"
#include "startup/flows/StartupFlow.h"
#include "ui/UserInterface.h"

namespace swabby {

/// Everything that goes on over time for one state, for as long as the application runs.
struct ApplicationFlows {
    explicit ApplicationFlows(AppState &state)
        : ai(state.sharedMachine(), modelAddressesFromEnvironment()),
          notifications(state, ai,
                        [machine = state.sharedMachine()](const ScanControl &control) {
                            return reclaimableStorage(*machine, control);
                        }),
          cleanup(state),
          quitting(state),
          startup(state)
    {
    }

    CloudAI ai;
    NotificationFlow notifications;
    CleanupFlow cleanup;
    QuitFlow quitting;
    StartupFlow startup;
};

} // namespace swabby
