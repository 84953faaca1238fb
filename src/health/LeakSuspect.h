#pragma once

#include <QtCore/QString>

#include <cstdint>

namespace swabby {

/// A program whose memory keeps climbing.
struct LeakSuspect {
    std::int32_t pid = 0;
    QString name;
    double growthMB = 0; ///< mebibytes over the tracked span
    int minutesTracked = 0;
    bool mayBeQuit = true; ///< as in ProcessSample

    bool operator==(const LeakSuspect &) const = default;
};

/// "Possible memory leak: …"
QString leakHeadline(const LeakSuspect &suspect);
/// "Memory climbed steadily for …"
QString leakDetail(const LeakSuspect &suspect);

} // namespace swabby
