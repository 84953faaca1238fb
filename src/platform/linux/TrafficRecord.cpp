#include "platform/linux/TrafficRecord.h"

#include <utility>

namespace swabby {

bool TrafficRecord::isEmpty() const
{
    const std::lock_guard lock(m_mutex);
    return !m_newer;
}

std::shared_ptr<const TrafficReading> TrafficRecord::exchange(double seconds,
                                                              const std::vector<SocketBytes> &sockets)
{
    constexpr double shortestInterval = 30;
    const std::lock_guard lock(m_mutex);
    if (m_newer && seconds - m_newer->seconds < shortestInterval)
        return m_older ? m_older : m_newer;
    auto reading = std::make_shared<TrafficReading>(TrafficReading{seconds, {}});
    for (const SocketBytes &socket : sockets)
        reading->sockets.emplace(socket.cookie, socket);
    m_older = std::exchange(m_newer, std::move(reading));
    return m_older;
}

} // namespace swabby
