#pragma once

#include <QtCore/QThreadPool>

#include <functional>

namespace swabby {

/// Threads of low priority for work that may hang in a tool for good: a stuck task keeps its own thread and
/// nothing else.
class BackgroundWork {
public:
    /// At most so many tasks at a time.
    explicit BackgroundWork(int limit);
    /// Waits for the tasks; whoever owns this ends them first.
    ~BackgroundWork();

    /// Begins the task and returns at once. False, and the task is dropped, while the limit is reached.
    bool begin(std::function<void()> task);
    void wait();

private:
    QThreadPool m_threads;
};

} // namespace swabby
