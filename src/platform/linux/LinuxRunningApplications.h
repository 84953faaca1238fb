#pragma once

#include "platform/RunningApplications.h"
#include "platform/linux/LinuxApplicationSource.h"

#include <functional>

namespace swabby {

/// Which of the user's own applications run, told by their programs. Nobody here can ask an application
/// to quit: that is the next step's business, a signal.
class LinuxRunningApplications final : public RunningApplications {
public:
    struct Sources {
        std::function<void()> listProcesses;
        /// The process that runs a program or script, or one in its private folder; 0 when none does.
        std::function<std::int32_t(const std::string &program, const std::string &folder)> pidRunning;
    };

    LinuxRunningApplications(LinuxApplicationSource applications, Sources sources)
        : m_applications(std::move(applications)), m_sources(std::move(sources))
    {
    }

    std::vector<RunningApplication> list() override;
    bool canAsk() const override { return false; }
    bool terminate(std::int32_t) override { return false; }

private:
    const LinuxApplicationSource m_applications;
    const Sources m_sources;
};

} // namespace swabby
