#include "platform/StopToken.h"

#include "platform/posix/Channels.h"

#include <atomic>
#include <cerrno>
#include <poll.h>

namespace swabby {

// Closing the writing end makes the reading end readable for everybody and for good.
struct StopToken::Pipe {
    void close()
    {
        // Said first, so that whoever is woken by the pipe finds it.
        if (!stopped.exchange(true))
            ends.second.reset();
    }

    Ends ends = makePipe();
    std::atomic<bool> stopped = false;
};

bool StopToken::stopRequested() const
{
    return m_pipe && m_pipe->stopped;
}

int StopToken::descriptor() const
{
    return m_pipe ? m_pipe->ends.first.number() : -1;
}

bool StopToken::waitFor(std::chrono::milliseconds time) const
{
    using Steady = std::chrono::steady_clock;
    const auto end = Steady::now() + time;
    while (!stopRequested()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Steady::now()).count();
        if (left <= 0)
            return true;
        pollfd watched = {descriptor(), POLLIN, 0};
        if (::poll(&watched, 1, static_cast<int>(left)) < 0 && errno != EINTR)
            return false;
    }
    return false;
}

StopSource::StopSource()
{
    m_token.m_pipe = std::make_shared<StopToken::Pipe>();
}

void StopSource::requestStop()
{
    m_token.m_pipe->close();
}

} // namespace swabby
