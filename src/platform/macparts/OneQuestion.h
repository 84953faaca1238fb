#pragma once

#include "platform/StopToken.h"

#include <atomic>
#include <future>
#include <memory>
#include <optional>
#include <system_error>
#include <thread>

namespace swabby {

/// Asks something that may wait for a person, one question at a time: another one waits for the first to be
/// answered, however long ago somebody gave up on it. Any thread.
class OneQuestion {
public:
    using Clock = std::chrono::steady_clock;

    /// What the call gives within that time. No value when it has not come back by then, or before a stop; it
    /// is then left alone, since nothing ends a question of the system's. One whose turn did not come is
    /// never asked.
    template <typename Call>
    auto ask(std::chrono::milliseconds time, const StopToken &stop, const StopToken &end, Call call)
        -> std::optional<decltype(call())>
    {
        constexpr std::chrono::milliseconds pause(20);
        const auto isOver = [&, giveUp = Clock::now() + time] {
            return stop.stopRequested() || end.stopRequested() || Clock::now() >= giveUp;
        };
        while (m_isOpen->exchange(true)) {
            if (isOver())
                return std::nullopt;
            std::this_thread::sleep_for(pause);
        }
        std::packaged_task<decltype(call())()> task([call = std::move(call), isOpen = m_isOpen] {
            auto given = call();
            *isOpen = false;
            return given;
        });
        auto answer = task.get_future();
        try {
            std::thread(std::move(task)).detach();
        } catch (const std::system_error &) { // too many threads
            *m_isOpen = false;
            return std::nullopt;
        }
        while (!isOver())
            if (answer.wait_for(pause) == std::future_status::ready)
                return answer.get();
        return std::nullopt;
    }

private:
    const std::shared_ptr<std::atomic<bool>> m_isOpen = std::make_shared<std::atomic<bool>>(false);
};

} // namespace swabby
