#pragma once

#include "cleanup/RemovableItem.h"
#include "platform/BackgroundWork.h"
#include "platform/LatestRun.h"
#include "state/AppState.h"

#include <QtCore/QObject>

#include <chrono>
#include <vector>

namespace swabby {

/// The single entry to removing things: runs what was confirmed in the background, publishes its result for
/// as long as a banner is read, counts it towards the week, and remembers what can be put back. Main thread.
class CleanupFlow : public QObject {
    Q_OBJECT

public:
    explicit CleanupFlow(AppState &state, std::chrono::milliseconds bannerTime = std::chrono::seconds(4));

    /// Removes the items and returns at once; a run that is under way when this goes finishes the item at
    /// hand. Nothing happens for no items.
    void remove(const std::vector<RemovableItem> &items);
    /// Moves what the last removal put into the Trash back where it was, and returns at once.
    void putBack();
    /// Whether there is something to put back, and no removal runs that may still add to it.
    bool canPutBack() const { return m_canPutBack && m_runs == 0; }

Q_SIGNALS:
    /// These begin to go: whoever lists them takes them off.
    void begun(const std::vector<swabby::RemovableItem> &items);
    /// A removal has been carried out; what the banner reports, also after the banner.
    void removed(const swabby::CleanupReport &report);
    /// Things are back where they were, or still in the Trash.
    void restored(qint64 restored, qint64 left);
    /// What an earlier program's last removal left has been found, or that it left nothing.
    void putBackChanged();

private:
    void lookForRecord();
    void showBanner(const CleanupReport &report);

    AppState &m_state;
    const std::chrono::milliseconds m_bannerTime;
    bool m_canPutBack = false;
    bool m_hasRun = false;
    int m_runs = 0; ///< under way
    // Last, so that the work is told to stop, then waited for while everything it uses still stands.
    BackgroundWork m_work;
    LatestRun m_answers;
};

} // namespace swabby
