#include "platform/linux/EnergyMeter.h"

#include "platform/linux/KernelFile.h"

#include <array>

namespace swabby {

namespace {

constexpr double secondsPerWakeUp = 0.0002;

ThreadRun threadRun(const std::string &path)
{
    std::array<char, 128> buffer;
    const Descriptor file = openForReading(path);
    return file.isOpen() ? threadRunFrom(readFromStart(file.number(), buffer.data(), buffer.size()))
                         : ThreadRun();
}

} // namespace

ThreadRun threadRunFrom(std::string_view schedstatText)
{
    // Time on a processor, time waiting for one, times put on one.
    ThreadRun run;
    run.nanoseconds = integerOf<std::uint64_t>(nextWord(schedstatText)).value_or(0);
    nextWord(schedstatText);
    run.starts = integerOf<std::uint64_t>(nextWord(schedstatText)).value_or(0);
    return run;
}

std::vector<ProcessRun> readRuns(const std::string &procRoot, std::span<const MeasuredProcess> processes)
{
    std::vector<ProcessRun> runs;
    runs.reserve(processes.size());
    for (const MeasuredProcess &process : processes) {
        ProcessRun &run = runs.emplace_back();
        const std::string folder = procRoot + '/' + std::to_string(process.pid);
        const auto add = [&](std::int32_t thread, const std::string &path) {
            const ThreadRun figures = threadRun(path);
            if (figures.starts > 0)
                run.emplace(thread, figures);
        };
        if (process.threads <= 1) {
            add(process.pid, folder + "/schedstat");
            continue;
        }
        for (const std::string &name : folderEntries(folder + "/task")) {
            if (const auto thread = integerOf<std::int32_t>(name))
                add(*thread, folder + "/task/" + name + "/schedstat");
        }
    }
    return runs;
}

double energyImpact(const ProcessRun &before, const ProcessRun &after, double seconds)
{
    if (seconds <= 0)
        return 0;
    double runTime = 0;
    double wakeUps = 0;
    for (const auto &[thread, now] : after) {
        const auto known = before.find(thread);
        const ThreadRun then = known == before.end() ? ThreadRun() : known->second;
        if (now.nanoseconds < then.nanoseconds || now.starts < then.starts)
            continue; // another thread under the same number
        runTime += static_cast<double>(now.nanoseconds - then.nanoseconds) / 1e9;
        wakeUps += static_cast<double>(now.starts - then.starts);
    }
    return 100.0 * (runTime + secondsPerWakeUp * wakeUps) / seconds;
}

} // namespace swabby
