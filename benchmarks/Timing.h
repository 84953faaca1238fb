#pragma once

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

namespace swabby {

/// The processor time of this process and of those it has waited for.
inline double processorMilliseconds()
{
    double sum = 0;
    for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage used = {};
        ::getrusage(who, &used);
        for (const timeval &time : {used.ru_utime, used.ru_stime})
            sum += 1e3 * static_cast<double>(time.tv_sec) + 1e-3 * static_cast<double>(time.tv_usec);
    }
    return sum;
}

/// What the rounds of some work took, in milliseconds.
struct Times {
    std::vector<double> clock{};
    std::vector<double> processor{};

    void add(const std::function<void()> &work)
    {
        const auto begin = std::chrono::steady_clock::now();
        const double used = processorMilliseconds();
        work();
        processor.push_back(processorMilliseconds() - used);
        clock.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count());
    }
};

inline double median(std::vector<double> times)
{
    std::nth_element(times.begin(), times.begin() + std::ssize(times) / 2, times.end());
    return times[times.size() / 2];
}

} // namespace swabby
