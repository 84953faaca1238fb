#pragma once

#include "platform/desktop/TrayItem.h"

#include <optional>

namespace swabby {

/// A line of the item's menu; one without a command parts the lines above it from those below.
struct TrayMenuLine {
    std::optional<TrayCommand> command = {};
    const char *text = "";
};

inline constexpr TrayMenuLine trayMenu[] = {{TrayCommand::openMainWindow, "Open Swabby"},
                                            {TrayCommand::openAskWindow, "Ask AI"},
                                            {TrayCommand::openSettingsWindow, "Settings"},
                                            {TrayCommand::refresh, "Refresh now"},
                                            {},
                                            {TrayCommand::quit, "Quit Swabby"}};

} // namespace swabby
