#pragma once

#include "platform/StartupSource.h"
#include "platform/StopToken.h"
#include "platform/linux/AutostartEntries.h"
#include "platform/linux/EnabledUnits.h"

#include <functional>
#include <mutex>

namespace swabby {

/// What starts by itself on this machine: desktop entries at login, then enabled units of the service
/// manager. The user's own ones are user agents, those for every user's session global agents, the system's
/// daemons. A unit is loaded while the manager has it active; a desktop entry while its program runs. Reads
/// files that have changed since, and asks the two message buses: may block for about two seconds when a
/// bus does not answer. Safe to call from several threads, one after the other.
class LinuxStartupSource final : public StartupSource {
public:
    struct Sources {
        AutostartFolders autostart;
        UnitFolders units;
        ProgramFolders programs;
        std::string ownProgram; ///< Swabby's own for a window
        std::string systemBus;  ///< address; empty when there is no service manager to ask
        std::string userBus;
        /// The process that runs a program, or one in its private folder; 0 when none does.
        std::function<std::int32_t(const std::string &program, const std::string &folder)> pidRunning;
        StopToken stop;
    };

    explicit LinuxStartupSource(Sources sources);

    std::vector<StartupEntry> entries() override;

private:
    void addAutostart(std::vector<StartupEntry> &entries);
    void addUnits(std::vector<StartupEntry> &entries);

    const Sources m_sources;
    std::mutex m_mutex;
    AutostartEntries m_autostart;
    EnabledUnits m_units;
};

} // namespace swabby
