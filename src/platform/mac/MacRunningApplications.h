#pragma once

#include "platform/RunningApplications.h"

namespace swabby {

/// The applications of the person's session. In a program without an event loop of the desktop's, as they
/// were when it first asked.
class MacRunningApplications final : public RunningApplications {
public:
    /// Who tells processes apart has to outlive this.
    explicit MacRunningApplications(ProcessControl &processes) : m_processes(processes) {}

    std::vector<RunningApplication> list() override;
    bool asksAll() const override { return true; }
    bool canAsk(const ProcessIdentity & /*process*/) override { return true; }
    bool terminate(const ProcessIdentity &process) override;

private:
    ProcessControl &m_processes;
};

} // namespace swabby
