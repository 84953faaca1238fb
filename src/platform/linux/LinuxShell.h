#pragma once

#include "platform/posix/PosixShell.h"

namespace swabby {

/// Runs tools as child processes, and gives by itself what two of them would print, in half the time and
/// less: `du -sk PATH` and `find PATH -maxdepth LEVELS -type d -name NAME -prune -print`. Where something is
/// mounted below, and for all it cannot tell, it runs the tool: a tool that waits for a dead disk can be
/// ended.
class LinuxShell final : public Shell {
public:
    /// All ends when stop is requested, whatever token a call brings.
    explicit LinuxShell(const StopToken &stop) : m_tools(stop), m_stop(stop) {}

    bool has(const std::string &executable) override;
    bool launch(const std::string &executable, const std::vector<std::string> &arguments) override;

private:
    std::optional<std::string> perform(const std::string &executable,
                                       const std::vector<std::string> &arguments, ToolOutput output,
                                       const StopToken &stop) override;

    PosixShell m_tools;
    StopToken m_stop;
};

} // namespace swabby
