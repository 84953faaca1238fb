#pragma once

#include "ai/CloudAI.h"
#include "cleanup/Search.h"
#include "flows/cleanup/CleanupFlow.h"
#include "flows/cleanup/QuitFlow.h"
#include "flows/health/NotificationFlow.h"
#include "flows/startup/StartupFlow.h"
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
          quitting(state),
          startup(state),
          systemCalls(systemCallsAtOnce),
          stopping{state.sharedMachine()},
          cleanup(state)
    {
        // What has been done shows in the figures at once.
        QObject::connect(&quitting, &QuitFlow::finished, &state, [&state](int, Quitting::Outcome outcome) {
            if (outcome == Quitting::Outcome::ended)
                state.refreshAnew();
        });
        QObject::connect(&cleanup, &CleanupFlow::removed, &state, &AppState::refreshAnew);
        QObject::connect(&cleanup, &CleanupFlow::restored, &state, &AppState::refreshAnew);
    }

    /// What the windows are told; the program adds its own callbacks.
    UserInterfaceContext windowContext(AppState &state, ThemeChoice theme)
    {
        return {.state = state,
                .ai = ai,
                .cleanup = cleanup,
                .quitting = quitting,
                .startup = startup,
                .systemCalls = systemCalls,
                .theme = theme};
    }

    static constexpr int systemCallsAtOnce = 4;

    /// Ends every tool that somebody would wait for.
    struct Stopping {
        std::shared_ptr<Machine> machine;
        ~Stopping() { machine->stop.requestStop(); }
    };

    CloudAI ai;
    NotificationFlow notifications;
    QuitFlow quitting;
    StartupFlow startup;
    BackgroundWork systemCalls; ///< the windows'
    Stopping stopping;
    CleanupFlow cleanup; // last: it finishes the item at hand before anything is stopped
};

} // namespace swabby
