#pragma once

#include "engine/HistoryPoint.h"
#include "platform/BackgroundWork.h"
#include "platform/posix/FolderLock.h"

#include <functional>
#include <mutex>
#include <optional>

namespace swabby {

/// Keeps the day's history on disk from a thread of its own, so that nobody waits for the disk. Of several
/// programs on one machine only the one that holds the lock on the data folder writes; when that one
/// ends, the next takes over and keeps the points it left.
class HistoryKeeper {
public:
    /// Told, on the keeper's thread, why the history cannot be stored: once when that begins or changes, and
    /// with an empty text when it is over.
    using Trouble = std::function<void(const QString &why)>;

    /// When it goes away, what is still waiting is written.
    explicit HistoryKeeper(QString applicationData, Trouble trouble = {});
    /// Has the history saved. Returns at once; when saves come faster than the disk, only the newest counts.
    void keep(const History &points, double now);
    /// Waits until what was handed over is written, and gives why it could not be.
    QString finish();

private:
    struct Save {
        History points;
        double now = 0;
    };

    /// Gives why it could not be written.
    QString write(const Save &save);
    /// Takes the lock if nobody else has it.
    bool takeTurn();

    QString m_applicationData;
    Trouble m_trouble;
    QString m_lastTrouble; ///< that thread's
    std::optional<FolderLock> m_lock;
    History m_inherited; ///< what a program left that had its turn before this one

    std::mutex m_mutex;
    std::optional<Save> m_waiting;
    BackgroundWork m_writing; // last, so that it ends while everything it uses still stands
};

} // namespace swabby
