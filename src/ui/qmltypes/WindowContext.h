#pragma once

#include "platform/Machine.h"
#include "platform/desktop/TrayItem.h"
#include "settings/SettingTable.h"

#include <functional>

namespace swabby {

class AppState;
class BackgroundWork;
class CleanupFlow;
class CloudAI;
class QuitFlow;
class StartupFlow;

/// Refreshes until every figure is one to show. Where nobody looked at the start of the program, the load
/// needs a second look: the first one has nothing to compare with and says 0.
inline int refreshesUntilFigures(const Machine &machine)
{
    return machine.kernel->cpuTicksAtStart() ? machine.refreshesUntilReal : 2;
}

/// What became of the installed Swabby since the one that runs was started.
struct Standing {
    QString text; ///< in a sentence or two; empty while the two are the same
    bool canStartAnew = false;

    bool operator==(const Standing &) const = default;
};

/// What the windows are told by the program that opens them.
struct UserInterfaceContext {
    // What the windows show and act through; the application's, and alive as long as any window.
    AppState &state;
    CloudAI &ai;
    CleanupFlow &cleanup;
    QuitFlow &quitting;
    StartupFlow &startup;
    /// For what may wait for the system.
    BackgroundWork &systemCalls;
    ThemeChoice theme = ThemeChoice::system;
    /// Whether there is an item in the panel, by which Swabby can still be reached once its last window is
    /// closed.
    std::function<TrayItem::Place()> panelPlace = [] { return TrayItem::Place::there; };
    std::function<void()> quit = [] {};
    std::function<Standing()> standing = [] { return Standing(); };
    /// Ends this Swabby and begins the one that is installed now.
    std::function<void()> startAnew = [] {};
    /// Called with the reason, in a line without a full stop, when a window cannot be made.
    std::function<void(const QString &why)> cannotOpen = [](const QString & /*why*/) {};
    /// Called when the choice to show Swabby in the Dock was stored.
    std::function<void()> dockChoiceChanged = [] {};
    // How one window leads to another; set by the windows' library.
    std::function<void()> openMainWindow = [] {};
    std::function<void()> openAskWindow = [] {};
    std::function<void()> openSettingsWindow = [] {};
    /// The settings, at what is about the assistant.
    std::function<void()> openAssistantSettings = [] {};
};

} // namespace swabby
