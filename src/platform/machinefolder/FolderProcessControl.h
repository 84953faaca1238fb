#pragma once

#include "platform/BootClock.h"
#include "platform/ProcessControl.h"
#include "platform/machinefolder/EventLog.h"

#include <set>

namespace swabby {

/// Signals are written down; ids that the description calls unsignalable refuse them.
class FolderProcessControl final : public ProcessControl {
public:
    FolderProcessControl(std::set<std::int32_t> unsignalablePids, BootClock &boot, const EventLog &events)
        : m_unsignalablePids(std::move(unsignalablePids)), m_boot(boot), m_events(events)
    {
    }

    std::optional<ProcessIdentity> identify(std::int32_t pid) override;
    bool signal(const ProcessIdentity &process, QuitSignal signal) override;
    /// What a description lists stays listed.
    std::optional<bool> endsWithin(std::chrono::milliseconds, const ProcessIdentity &,
                                   const StopToken &) override
    {
        return std::nullopt;
    }

private:
    const std::set<std::int32_t> m_unsignalablePids;
    BootClock &m_boot;
    const EventLog &m_events;
};

} // namespace swabby
