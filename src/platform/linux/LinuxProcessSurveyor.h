#pragma once

#include "platform/ProcessSurvey.h"
#include "platform/StopToken.h"
#include "platform/linux/ProcessTable.h"
#include "platform/linux/SocketOwners.h"
#include "platform/linux/SocketStatistics.h"

namespace swabby {

/// Surveys of this machine. begin() lists the processes, once for all of the survey's lists, and reads
/// energy and network figures for the first time; the first of power() and network() waits out the rest of
/// the second and reads both again, so that one second measures both. Energy is measured for processes that
/// have run since the previous survey, network for TCP connections that live through the second or are
/// made in it. A survey must not outlive its surveyor.
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
};

} // namespace swabby
