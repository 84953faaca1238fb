#pragma once

#include "platform/StartupSource.h"
#include "platform/linux/FileCache.h"
#include "platform/linux/ProgramFolders.h"
#include "platform/linux/UnitFile.h"

#include <string>
#include <vector>

namespace swabby {

/// Folders like /etc/systemd/system, in which "*.wants" and "*.requires" hold a link for each enabled unit.
struct UnitFolders {
    std::string user;   ///< of this user alone
    std::string global; ///< of every user's session
    std::string system;
};

/// A unit that starts by itself.
struct EnabledUnit {
    StartupEntry entry;
    std::string unit;    ///< name of the unit that is enabled
    std::string service; ///< the service whose program runs: the unit itself, or what a timer starts
};

/// The enabled services and timers. The link that enables one is its definition: renaming or removing it is
/// what turns the unit off. Left out is what a person would not call a program of theirs: units that come
/// with the system and are part of how it runs (see isSystemPlumbing()), timers that come with the system,
/// masked units and units that start no program. Not safe for several threads at once.
class EnabledUnits {
public:
    EnabledUnits(UnitFolders folders, ProgramFolders programs);

    /// The user's first, then those of all users' sessions, then the system's, each by folder and name.
    /// Nothing is said about running programs.
    std::vector<EnabledUnit> list();

private:
    void addFolder(const std::string &folder, LoginItemScope scope, std::vector<EnabledUnit> &units);
    std::optional<EnabledUnit> enabledUnit(const std::string &link, const std::string &name,
                                           const std::string &folder);

    const UnitFolders m_folders;
    const ProgramFolders m_programs;
    std::vector<std::string> m_serviceFolders; ///< where the manager looks for the bare name of a program
    FileCache<UnitFile> m_cache;
};

/// Whether a unit of this name, when it comes with the system, is part of the system itself: its start-up,
/// sessions, devices, printing, network, sound, accounts and upkeep.
bool isSystemPlumbing(std::string_view unit);

} // namespace swabby
