#pragma once

#include "platform/ProcessSurvey.h"
#include "platform/StopToken.h"
#include "platform/linux/ProcessTable.h"
#include "platform/linux/SocketOwners.h"
#include "platform/linux/TrafficRecord.h"

namespace swabby {

/// Surveys of this machine. begin() lists the processes, once for all of the survey's lists, and reads
/// what they have run; the first of power() and network() waits out the rest of a second and reads it again.
/// Energy is measured over that second, for processes that have run since the previous survey; traffic since
/// a survey of about a minute ago, for TCP connections that are still open. The very first survey has nothing
/// to compare with: whatever is asked first waits out its second, and everything is over that. A survey must
/// not outlive its surveyor.
class LinuxProcessSurveyor final : public ProcessSurveyor {
public:
    struct Sources {
        std::string procRoot;
        std::shared_ptr<ProcessTable> table;
        std::function<double()> steadySeconds; ///< a clock that is never set
        std::function<std::optional<std::vector<SocketBytes>>()> socketBytes;
        StopToken stop; ///< ends the wait; the figures are then empty
        /// The processes that the person's session stands on.
        std::function<std::unordered_set<std::int32_t>()> sessionHolders = [] {
            return std::unordered_set<std::int32_t>();
        };
    };

    explicit LinuxProcessSurveyor(Sources sources);

    std::unique_ptr<ProcessSurvey> begin() override;

private:
    const Sources m_sources;
    SocketOwners m_owners;
    TrafficRecord m_traffic;
};

} // namespace swabby
