#pragma once

#include "platform/Clock.h"
#include "platform/machinefolder/EventLog.h"
#include "platform/posix/PosixShell.h"

#include <QtCore/QString>

namespace swabby {

/// Runs a machine folder's stand-ins: DIR/root/usr/bin/top where a Mac would run /usr/bin/top. They find
/// the folder in MACHINE_DIR and the machine's time in MACHINE_NOW.
class FolderShell final : public Shell {
public:
    FolderShell(const QString &folder, const Clock &clock, const EventLog &events, StopToken stop);

    std::optional<std::string> run(const std::string &executable, const std::vector<std::string> &arguments,
                                   ToolOutput output = ToolOutput::bothStreams,
                                   const StopToken &stop = {}) override;
    /// Nothing of a described machine outlives this program.
    bool launch(const std::string & /*executable*/, const std::vector<std::string> & /*arguments*/) override
    {
        return false;
    }

private:
    std::string m_folder;
    const Clock &m_clock;
    const EventLog &m_events;
    PosixShell m_shell;
};

} // namespace swabby
