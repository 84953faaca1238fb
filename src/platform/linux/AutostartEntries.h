#pragma once

#include "platform/StartupSource.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/FileCache.h"
#include "platform/linux/ProgramFolders.h"

#include <string>
#include <vector>

namespace swabby {

/// Where desktop entries that start at login lie.
struct AutostartFolders {
    std::string user;
    std::vector<std::string> system; ///< most important first
    std::string desktops;            ///< colon-separated names of the running desktop, may be empty
};

/// The desktop entries that start at login, as the desktop reads them: an entry of the user's hides a system
/// one of the same file name; entries that are hidden, switched off, meant for another desktop or for a
/// program that is not installed start nothing and are left out. So are the desktop's own parts: entries
/// the system's packages install that a desktop does not show among its startup programs either, or that
/// belong to its start sequence. Not safe for several threads at once.
class AutostartEntries {
public:
    /// The program is Swabby's own for a window.
    AutostartEntries(AutostartFolders folders, ProgramFolders programs, const std::string &ownProgram);

    /// User's first, each folder in the order of the file names. Nothing is said about running programs.
    std::vector<StartupEntry> list();

private:
    void addFolder(const std::string &folder, LoginItemScope scope, std::vector<std::string> &seen,
                   std::vector<StartupEntry> &entries);
    bool starts(const DesktopEntry &entry) const;

    const AutostartFolders m_folders;
    const ProgramFolders m_programs;
    const std::string m_ownProgram;
    FileCache<DesktopEntry> m_cache;
};

} // namespace swabby
