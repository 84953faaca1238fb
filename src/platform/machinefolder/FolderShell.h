#pragma once

#include "platform/Clock.h"
#include "platform/MachineFolder.h"
#include "platform/machinefolder/EventLog.h"
#include "platform/machinefolder/RecordedAnswers.h"
#include "platform/posix/PosixShell.h"

#include <mutex>

namespace swabby {

/// Runs a machine folder's stand-ins: DIR/root/usr/bin/top where a Mac would run /usr/bin/top. They find
/// the folder in MACHINE_DIR and the machine's time in MACHINE_NOW. Where they do not run, what they said
/// when the folder was recorded stands for them; else they count as missing, and the first that is there is
/// remarked on.
class FolderShell final : public Shell {
public:
    /// The folder by its absolute path.
    FolderShell(MachineFolder folder, const Clock &clock, const EventLog &events, StopToken stop);

    bool has(const std::string &executable) override;
    /// Nothing of a described machine outlives this program.
    bool launch(const std::string & /*executable*/, const std::vector<std::string> & /*arguments*/) override
    {
        return false;
    }

private:
    std::optional<std::string> perform(const std::string &executable,
                                       const std::vector<std::string> &arguments, ToolOutput output,
                                       const StopToken &stop) override;
    bool runs(const std::string &executable);

    const MachineFolder m_folder;
    RecordedAnswers m_answers;
    const std::string m_path;
    std::once_flag m_hasRemarked;
    const Clock &m_clock;
    const EventLog &m_events;
    PosixShell m_shell;
};

} // namespace swabby
