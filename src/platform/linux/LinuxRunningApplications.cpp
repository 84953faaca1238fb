#include "platform/linux/LinuxRunningApplications.h"

namespace swabby {

std::vector<RunningApplication> LinuxRunningApplications::list()
{
    m_sources.listProcesses();
    std::vector<RunningApplication> running;
    for (const auto &started : m_applications.startedApplications()) {
        // One that goes as a folder may run any program in there.
        const bool isFolder = started.application.path != started.program;
        const std::int32_t pid = m_sources.pidRunning(
            started.program.native(), isFolder ? started.application.path.native() : std::string());
        if (pid > 0)
            running.push_back({.pid = pid, .bundleId = started.application.bundleId});
    }
    return running;
}

} // namespace swabby
