#pragma once

#include <QtCore/QString>
#include <QtCore/QUuid>

namespace swabby {

/// What a removal run reports: the figures as they were agreed to, and beside them how many things stayed.
struct CleanupSuccess {
    QUuid id; ///< fresh for every run
    qint64 itemCount = 0;
    qint64 freedBytes = 0;
    qint64 left = 0;         ///< items of which something stayed
    qint64 canBePutBack = 0; ///< things that lie in the Trash now

    bool operator==(const CleanupSuccess &) const = default;
};

/// "Removed 3 items — freed 1.2 GB".
QString bannerText(const CleanupSuccess &success);

/// The quiet line beside it; empty when everything went.
QString leftText(const CleanupSuccess &success);

} // namespace swabby
