#pragma once

#include "platform/Machine.h"

#include <QtCore/QRect>
#include <QtCore/QString>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>

namespace swabby {

class AppState;
class BackgroundWork;
class CleanupFlow;
class CloudAI;
class QuitFlow;
class StartupFlow;

/// Refreshes until every figure is one to show. The load needs a second look on any machine: the first one
/// has nothing to compare with and says 0.
inline int refreshesUntilFigures(const Machine &machine)
{
    return std::max(2, machine.refreshesUntilReal);
}

enum class ThemeChoice { system, light, dark };

/// What the windows are told by the program that opens them.
struct UserInterfaceContext {
    AppState *state = nullptr;
    // What the windows act through; the application's, and alive as long as any window.
    CloudAI *ai = nullptr;
    CleanupFlow *cleanup = nullptr;
    QuitFlow *quitting = nullptr;
    StartupFlow *startup = nullptr;
    /// For what may wait for the system; set by the windows' library.
    BackgroundWork *errands = nullptr;
    ThemeChoice theme = ThemeChoice::system;
    /// Whether Swabby can still be reached once its last window is closed.
    std::function<bool()> staysWithoutWindow = {};
    std::function<void()> quit = {};
    /// Called when the choice to show Swabby in the Dock was stored.
    std::function<void()> dockChoiceChanged = {};
    // How one window leads to another; set by the windows' library.
    std::function<void()> openMainWindow = {};
    std::function<void()> openAskWindow = {};
    std::function<void()> openSettingsWindow = {};
};

/// The windows. They live in a library of their own, loaded when the first one opens, so that Swabby
/// stays small while it only watches.
class UserInterface {
public:
    virtual ~UserInterface() = default;

    /// Opens the main window, or brings it to the front.
    virtual void openMainWindow() = 0;
    /// Opens the window with the question card, or brings it to the front; there is never a second one.
    virtual void openAskWindow() = 0;
    /// Opens the settings, or brings them to the front.
    virtual void openSettingsWindow() = 0;
    /// Shows the small panel beside that rectangle of the screen (at the pointer when it is empty), or closes
    /// it.
    virtual void togglePopover(const QRect &statusItem) = 0;
    /// Shows the item's menu there, or closes it.
    virtual void toggleItemMenu(const QRect &statusItem) = 0;
    /// Draws every view into PNG files of that folder. No value when all went well, else what did not.
    virtual std::optional<QString> renderScreenshots(const QString &folder) = 0;
};

/// The library's one entry, by the name below.
using UserInterfaceEntry = UserInterface *(const UserInterfaceContext &context);
inline constexpr const char *userInterfaceLibrary = "libswabby-ui.so";
inline constexpr const char *userInterfaceEntryName = "swabbyUserInterface";

} // namespace swabby
