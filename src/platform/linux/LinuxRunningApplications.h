#pragma once

#include "platform/RunningApplications.h"
#include "platform/linux/LinuxApplicationSource.h"

#include <functional>

namespace swabby {

/// Which of the user's own applications run, told by their programs. Whatever has a window or says on the bus
/// how to end it is asked to quit; for any other program only a signal is left.
class LinuxRunningApplications final : public RunningApplications {
public:
    struct Sources {
        std::function<void()> listProcesses = {};
        /// The process that runs a program or script, or one in its private folder; 0 when none does.
        std::function<std::int32_t(const std::string &program, const std::string &folder)> pidRunning = {};
        std::function<bool(const ProcessIdentity &process)> canAsk = {};
        std::function<bool(const ProcessIdentity &process)> ask = {};
    };

    LinuxRunningApplications(LinuxApplicationSource applications, Sources sources)
        : m_applications(std::move(applications)), m_sources(std::move(sources))
    {
    }

    std::vector<RunningApplication> list() override;
    bool asksAll() const override { return false; }
    bool canAsk(const ProcessIdentity &process) override { return m_sources.canAsk(process); }
    bool terminate(const ProcessIdentity &process) override { return m_sources.ask(process); }

private:
    const LinuxApplicationSource m_applications;
    const Sources m_sources;
};

} // namespace swabby
