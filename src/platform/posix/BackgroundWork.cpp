#include "platform/BackgroundWork.h"

#include "platform/posix/ThreadPriority.h"

namespace swabby {

BackgroundWork::BackgroundWork(int limit, Urgency urgency) : m_urgency(urgency)
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

std::function<void()> BackgroundWork::prepared(std::function<void()> task) const
{
    if (m_urgency == Urgency::isWaitedFor)
        return task;
    return [task = std::move(task)] {
        useUtilityPriority();
        task();
    };
}

bool BackgroundWork::begin(std::function<void()> task)
{
    return m_threads.tryStart(prepared(std::move(task)));
}

void BackgroundWork::queue(std::function<void()> task)
{
    m_threads.start(prepared(std::move(task)));
}

void BackgroundWork::wait()
{
    m_threads.waitForDone();
}

} // namespace swabby
