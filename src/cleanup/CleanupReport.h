#pragma once

#include "cleanup/RemovableItem.h"

#include <QtCore/QString>
#include <QtCore/QUuid>

#include <vector>

namespace swabby {

/// What a removal run reports: the figures as they were agreed to, and beside them what stayed.
struct CleanupReport {
    QUuid id; ///< fresh for every run
    qint64 itemCount = 0;
    qint64 freedBytes = 0;
    std::vector<RemovableItem> left = {}; ///< items of which something stayed
    qint64 canBePutBack = 0;              ///< things that this run moved to the Trash
    bool isRecordable = true;             ///< false when something stayed only because its place could not
                                          ///< be written down
    QString problem = {};                 ///< why nothing was removed at all, without a full stop; else empty

    bool operator==(const CleanupReport &) const = default;
};

/// "Removed 3 items — freed 1.2 GB".
QString bannerText(const CleanupReport &report);

/// The quiet line beside it, which names what stayed or says why nothing went; empty when everything did.
QString leftText(const CleanupReport &report);

} // namespace swabby
