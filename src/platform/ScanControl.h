#pragma once

#include "platform/StopToken.h"

#include <QtCore/QString>

#include <cstdint>
#include <functional>

namespace swabby {

/// How far a long search is, for a person who waits for it.
struct ScanProgress {
    QString what;           ///< what is being looked at, for people
    std::int64_t done = 0;  ///< of total, in whatever the search counts
    std::int64_t total = 0; ///< 0 while unknown

    bool operator==(const ScanProgress &) const = default;
};

/// What whoever starts a long search hands it: a way to stop it, and an ear for its progress. A stopped
/// search ends its tools and comes back soon with what it has, which is then dropped.
struct ScanControl {
    StopToken stop;
    /// Called from the searching threads, never by two at once, often: cheap and non-blocking, please. May be
    /// empty.
    std::function<void(const ScanProgress &)> progress;

    void report(const ScanProgress &now) const
    {
        if (progress)
            progress(now);
    }
};

} // namespace swabby
