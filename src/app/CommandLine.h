#pragma once

#include "health/MainSection.h"
#include "papers/CommandWords.h"
#include "ui/UserInterface.h"

#include <QtCore/QStringList>

#include <optional>

namespace swabby {

/// What `swabby` was asked for when it was started.
struct CommandLine {
    std::optional<QString> machineFolder;
    bool runsTools = false; ///< those of the machine folder
    std::optional<MainSection> section;
    std::optional<ThemeChoice> theme; ///< else as the setting says
    std::optional<QString> screenshotsFolder;
    bool isBackground = false;
    bool wantsHelp = false;
    bool wantsVersion = false;
};

/// The arguments without the program's name. No value for wrong usage; problem then says in one line what
/// is wrong and what is right.
std::optional<CommandLine> parseCommandLine(const QStringList &arguments, QString *problem);

QString commandLineHelp(const MachineWords &words);

/// What swabby can be told, for its papers.
CommandWords applicationWords();

} // namespace swabby
