#include "platform/BackgroundWork.h"

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

namespace {

std::function<void()> withLowPriority(std::function<void()> task)
{
    return [task = std::move(task)] {
        useUtilityPriority();
        task();
    };
}

} // namespace

bool BackgroundWork::begin(std::function<void()> task)
{
    return m_threads.tryStart(withLowPriority(std::move(task)));
}

void BackgroundWork::queue(std::function<void()> task)
{
    m_threads.start(withLowPriority(std::move(task)));
}

void BackgroundWork::wait()
{
    m_threads.waitForDone();
}

} // namespace swabby
