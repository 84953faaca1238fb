#include "cleanup/SideBySide.h"

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>
#include <vector>

namespace swabby {

void sideBySide(std::size_t count, const std::function<void(std::size_t)> &work)
{
    std::atomic<std::size_t> next = 0;
    const auto takeTurns = [&] {
        for (std::size_t index = next++; index < count; index = next++)
            work(index);
    };
    std::vector<std::thread> helpers;
    const std::size_t processors = std::max(1U, std::thread::hardware_concurrency());
    try {
        while (helpers.size() + 1 < std::min(count, processors))
            helpers.emplace_back(takeTurns);
    } catch (const std::system_error &) {
        // A full machine gives no more threads; those that are there do it all.
    }
    takeTurns();
    for (std::thread &helper : helpers)
        helper.join();
}

} // namespace swabby
