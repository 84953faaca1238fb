#pragma once

#include "platform/machinefolder/EventLog.h"
#include "platform/machinefolder/MachineDescription.h"

#include <mutex>

namespace swabby {

/// The applications that a description says run. One that quits when asked is gone from then on.
class FolderRunningApplications final : public RunningApplications {
public:
    FolderRunningApplications(std::vector<DescribedApplication> applications, const EventLog &events)
        : m_applications(std::move(applications)), m_events(events)
    {
    }

    std::vector<RunningApplication> list() override;
    bool asksAll() const override { return true; }
    bool canAsk(const ProcessIdentity &) override { return true; }
    bool terminate(const ProcessIdentity &process) override;

private:
    std::mutex m_mutex;
    std::vector<DescribedApplication> m_applications;
    const EventLog &m_events;
};

} // namespace swabby
