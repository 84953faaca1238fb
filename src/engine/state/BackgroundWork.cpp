#include "engine/state/BackgroundWork.h"

#include "platform/posix/ThreadPriority.h"

namespace swabby {

BackgroundWork::BackgroundWork(int limit)
{
    // A thread that waits for the next minute would only hold memory.
    constexpr int idleMilliseconds = 1'000;
    m_threads.setMaxThreadCount(limit);
    m_threads.setExpiryTimeout(idleMilliseconds);
}

BackgroundWork::~BackgroundWork()
{
    wait();
}

bool BackgroundWork::begin(std::function<void()> task)
{
    return m_threads.tryStart([task = std::move(task)] {
        useUtilityPriority();
        task();
    });
}

void BackgroundWork::wait()
{
    m_threads.waitForDone();
}

} // namespace swabby
