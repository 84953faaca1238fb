#pragma once

#include <QtCore/QFuture>
#include <QtCore/QPromise>
#include <QtCore/QThreadPool>

#include <functional>
#include <memory>
#include <type_traits>

namespace swabby {

/// Whether work gives way to whatever the person is doing, or is what the person waits for.
enum class Urgency { canWait, isWaitedFor };

/// Threads, of low priority unless somebody waits for them, for work that may hang in a tool for good: a
/// stuck task keeps its own thread and nothing else.
class BackgroundWork {
public:
    /// At most so many tasks at a time.
    explicit BackgroundWork(int limit, Urgency urgency = Urgency::canWait);
    /// Waits for the tasks; whoever owns this ends them first.
    ~BackgroundWork();

    /// Begins the task and returns at once. False, and the task is dropped, while the limit is reached.
    bool begin(std::function<void()> task);
    /// Begins the task as soon as fewer than the limit run, in the order of the calls.
    void queue(std::function<void()> task);
    /// The same for a task that gives something back.
    template <typename Task>
    auto ask(Task task) -> QFuture<std::invoke_result_t<Task>>
    {
        using Result = std::invoke_result_t<Task>;
        const auto promise = std::make_shared<QPromise<Result>>();
        promise->start();
        queue([promise, task = std::move(task)]() mutable {
            promise->addResult(task());
            promise->finish();
        });
        return promise->future();
    }
    void wait();

private:
    std::function<void()> prepared(std::function<void()> task) const;

    const Urgency m_urgency;
    QThreadPool m_threads;
};

} // namespace swabby
