#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace swabby {

/// What the scheduler counts for one thread since it began.
struct ThreadRun {
    std::uint64_t nanoseconds = 0; ///< on a processor
    std::uint64_t starts = 0;      ///< times it was put on one, mostly after a sleep
};

/// From the text of a schedstat file; nothing for any other text.
ThreadRun threadRunFrom(std::string_view schedstatText);

/// The threads of one process by their number.
using ProcessRun = std::unordered_map<std::int32_t, ThreadRun>;

/// A process to be measured.
struct MeasuredProcess {
    std::int32_t pid = 0;
    std::int32_t threads = 0;
};

/// Reads /proc/PID/schedstat, for processes of several threads that of each thread. In the order asked for;
/// a process that has ended, or a kernel that does not count, gives no threads.
std::vector<ProcessRun> readRuns(const std::string &procRoot, std::span<const MeasuredProcess> processes);

/// An estimate of the power a process drew between two readings, for a scale on which 10 is moderate and 40
/// is high: 100 × (run time + 0.2 ms × wake-ups) ÷ seconds. A program that keeps one processor busy comes to
/// about 100; one that runs for next to nothing but wakes up 500 times a second comes to 10, because each
/// wake-up keeps the processor from its deeper sleep. Threads that ended in between are lost, those that
/// began count whole. 0 without an interval.
double energyImpact(const ProcessRun &before, const ProcessRun &after, double seconds);

} // namespace swabby
