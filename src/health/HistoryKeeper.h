#pragma once

#include "engine/HistoryPoint.h"
#include "platform/BackgroundWork.h"
#include "platform/posix/FolderLock.h"

#include <mutex>
#include <optional>

namespace swabby {

/// Keeps the day's history on disk from a thread of its own, so that nobody waits for the disk. Of several
/// programs on one machine only the one that holds the lock on the data folder writes; when that one
/// ends, the next takes over and keeps the points it left.
class HistoryKeeper {
public:
    /// When it goes away, what is still waiting is written.
    explicit HistoryKeeper(QString applicationData);
    /// Has the history saved. Returns at once; when saves come faster than the disk, only the newest counts.
    void keep(const History &points, double now);

private:
    struct Save {
        History points;
        double now = 0;
    };

    void write(const Save &save);
    /// Takes the lock if nobody else has it.
    bool takeTurn();

    QString m_applicationData;
    std::optional<FolderLock> m_lock;
    History m_inherited; ///< what a program left that had its turn before this one

    std::mutex m_mutex;
    std::optional<Save> m_waiting;
    BackgroundWork m_writing; // last, so that it ends while everything it uses still stands
};

} // namespace swabby
