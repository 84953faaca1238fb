#pragma once

#include "platform/Clock.h"
#include "platform/MachineFolder.h"
#include "platform/machinefolder/EventLog.h"
#include "platform/posix/PosixShell.h"

#include <mutex>

namespace swabby {

/// Runs a machine folder's stand-ins: DIR/root/usr/bin/top where a Mac would run /usr/bin/top. They find
/// the folder in MACHINE_DIR and the machine's time in MACHINE_NOW. Where they do not run, they count as
/// missing, and the first that is there is remarked on.
class FolderShell final : public Shell {
public:
    /// The folder by its absolute path.
    FolderShell(MachineFolder folder, const Clock &clock, const EventLog &events, StopToken stop);

    std::optional<std::string> run(const std::string &executable, const std::vector<std::string> &arguments,
                                   ToolOutput output = ToolOutput::bothStreams,
                                   const StopToken &stop = {}) override;
    bool has(const std::string &executable) override;
    /// Nothing of a described machine outlives this program.
    bool launch(const std::string & /*executable*/, const std::vector<std::string> & /*arguments*/) override
    {
        return false;
    }

private:
    const MachineFolder m_folder;
    const std::string m_path;
    std::once_flag m_hasRemarked;
    const Clock &m_clock;
    const EventLog &m_events;
    PosixShell m_shell;
};

} // namespace swabby
