#include "health/LeakDetection.h"

#include "engine/WholeNumber.h"

#include <algorithm>

namespace swabby {

QList<LeakSuspect> LeakTracker::update(const QList<ProcessSample> &processes, double now)
{
    constexpr double windowSeconds = 1'800;
    for (const ProcessSample &process : processes) {
        Track &track = m_rssHistory[process.pid];
        // Another program under a number that was given out again starts from nothing.
        if (track.name != process.name)
            track = {.name = process.name, .samples = {}};
        track.samples.push_back({now, process.rssBytes});
    }
    // A program that leaves the list for a while keeps its samples until they are too old.
    for (auto track = m_rssHistory.begin(); track != m_rssHistory.end();) {
        std::erase_if(track->second.samples,
                      [&](const Sample &sample) { return sample.date < now - windowSeconds; });
        track = track->second.samples.empty() ? m_rssHistory.erase(track) : std::next(track);
    }

    QList<LeakSuspect> suspects;
    for (const ProcessSample &process : processes)
        if (auto suspect = judge(process.pid, m_rssHistory.at(process.pid))) {
            suspect->mayBeQuit = process.mayBeQuit();
            suspects.append(*suspect);
        }
    return suspects;
}

std::optional<LeakSuspect> LeakTracker::judge(std::int32_t pid, const Track &track)
{
    constexpr double leastSpanSeconds = 900;
    constexpr double toleratedDrop = 0.05;
    constexpr double leastGrowthMB = 50;
    constexpr double bytesPerMB = 1'048'576;

    const double span = track.samples.back().date - track.samples.front().date;
    if (span < leastSpanSeconds)
        return std::nullopt;
    const auto fell = std::adjacent_find(
        track.samples.begin(), track.samples.end(), [](const Sample &before, const Sample &after) {
            return before.rss > after.rss && static_cast<double>(before.rss - after.rss) >
                                                 toleratedDrop * static_cast<double>(before.rss);
        });
    if (fell != track.samples.end())
        return std::nullopt;
    const double growth =
        (static_cast<double>(track.samples.back().rss) - static_cast<double>(track.samples.front().rss)) /
        bytesPerMB;
    if (growth < leastGrowthMB)
        return std::nullopt;
    constexpr double secondsPerMinute = 60;
    return LeakSuspect{.pid = pid,
                       .name = track.name,
                       .growthMB = growth,
                       .minutesTracked = static_cast<int>(span / secondsPerMinute)};
}

QString leakHeadline(const LeakSuspect &suspect)
{
    return QStringLiteral("Possible memory leak: ") + suspect.name;
}

QString leakDetail(const LeakSuspect &suspect)
{
    return QStringLiteral("Memory climbed steadily for ") + QString::number(suspect.minutesTracked) +
           QStringLiteral("m (+") + QString::number(wholeNumber(suspect.growthMB)) +
           QStringLiteral(" MB) without leveling off.");
}

} // namespace swabby
