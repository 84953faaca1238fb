#pragma once

#include <QtCore/QList>

namespace swabby {

/// One point of the day's history. Swabby's lists know a point by its date, so it carries no id.
struct HistoryPoint {
    double date = 0; ///< seconds since 1970
    double cpu = 0;  ///< percent
    double mem = 0;  ///< percent

    bool operator==(const HistoryPoint &) const = default;
};

/// Shared on copy, so that the day travels to the disk without being copied on the main thread.
using History = QList<HistoryPoint>;

/// How long a point is kept.
inline constexpr double historySpanSeconds = 86'400;

} // namespace swabby
