#pragma once

#include "platform/linux/SocketStatistics.h"

#include <memory>
#include <mutex>
#include <unordered_map>

namespace swabby {

/// What all connections had moved at one moment.
struct TrafficReading {
    double seconds = 0;                                     ///< on a clock that is never set
    std::unordered_map<std::uint64_t, SocketBytes> sockets; ///< by their cookies
};

/// What the connections had moved at earlier refreshes, so that traffic is one over about a minute, also when
/// somebody presses refresh in between. Safe to call from several threads.
class TrafficRecord {
public:
    bool isEmpty() const;
    /// Keeps this reading for later ones to compare with, unless the last one kept is from just before.
    /// Gives the one that this is to be compared with; null for the first.
    std::shared_ptr<const TrafficReading> exchange(double seconds, const std::vector<SocketBytes> &sockets);

private:
    mutable std::mutex m_mutex;
    std::shared_ptr<const TrafficReading> m_newer;
    std::shared_ptr<const TrafficReading> m_older;
};

} // namespace swabby
