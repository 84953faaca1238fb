#pragma once

#include "engine/ProcessSample.h"
#include "health/LeakSuspect.h"

#include <QtCore/QList>

#include <optional>
#include <unordered_map>
#include <vector>

namespace swabby {

/// Remembers resident sizes for half an hour and names the programs whose memory climbed for a quarter of
/// an hour or more without ever falling back noticeably.
class LeakTracker {
public:
    /// Adds one sample a process and gives the suspects among them, in their order. now in seconds since
    /// 1970.
    QList<LeakSuspect> update(const QList<ProcessSample> &processes, double now);

private:
    struct Sample {
        double date = 0;
        std::uint64_t rss = 0;
    };
    struct Track {
        QString name;
        std::vector<Sample> samples; ///< oldest first
    };

    static std::optional<LeakSuspect> judge(std::int32_t pid, const Track &track);

    std::unordered_map<std::int32_t, Track> m_rssHistory;
};

} // namespace swabby
