#include "platform/machinefolder/FolderRunningApplications.h"

#include <algorithm>

namespace swabby {

std::vector<RunningApplication> FolderRunningApplications::list()
{
    const std::scoped_lock guard(m_mutex);
    std::vector<RunningApplication> running;
    for (const DescribedApplication &described : m_applications)
        running.push_back(described.application);
    return running;
}

bool FolderRunningApplications::terminate(const ProcessIdentity &process)
{
    const std::scoped_lock guard(m_mutex);
    const auto found = std::find_if(m_applications.begin(), m_applications.end(), [&](const auto &described) {
        return described.application.pid == process.pid;
    });
    if (found == m_applications.end() || !found->terminates)
        return false;
    m_events.write(QStringLiteral("terminate"), process.pid);
    m_applications.erase(found);
    return true;
}

} // namespace swabby
