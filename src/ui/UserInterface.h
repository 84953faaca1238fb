#pragma once

#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QString>

#include <optional>

namespace swabby {

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
    /// Draws every view into PNG files of that folder, the main window in that size, its own when that is
    /// empty. No value when all went well, else what did not.
    virtual std::optional<QString> renderScreenshots(const QString &folder, const QSize &mainWindow) = 0;
};

/// The library's one entry, by the name below.
using UserInterfaceEntry = UserInterface *(const UserInterfaceContext &context);
inline constexpr const char *userInterfaceLibrary = "libswabby-ui.so";
inline constexpr const char *userInterfaceEntryName = "swabbyUserInterface";

} // namespace swabby
