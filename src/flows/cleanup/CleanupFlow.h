#pragma once

#include "cleanup/RemovableItem.h"
#include "platform/BackgroundWork.h"
#include "state/AppState.h"

#include <QCoroTask>

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
    /// Finishes the item at hand of a run that is under way.
    ~CleanupFlow() override;

    /// Removes the items and returns at once. Nothing happens for no items.
    void remove(const std::vector<RemovableItem> &items);
    /// Moves what the last removal put into the Trash back where it was, and returns at once.
    void putBack();
    /// Whether there is something to put back, and no removal runs that may still add to it.
    bool canPutBack() const { return m_canPutBack && m_runs == 0; }

Q_SIGNALS:
    /// A removal has been carried out; what the banner reports, also after the banner.
    void removed(const swabby::CleanupReport &report);
    /// Things are back where they were, or still in the Trash.
    void restored(qint64 restored, qint64 left);
    /// What an earlier program's last removal left has been found, or that it left nothing.
    void putBackChanged();

private:
    QCoro::Task<> lookForRecord();
    QCoro::Task<> run(std::vector<RemovableItem> items);
    QCoro::Task<> restore();
    void showBanner(const CleanupReport &report);

    AppState &m_state;
    const std::chrono::milliseconds m_bannerTime;
    StopSource m_stop;
    bool m_canPutBack = false;
    bool m_hasRun = false;
    int m_runs = 0;        ///< under way
    BackgroundWork m_work; // last, so that it is waited for while everything it uses still stands
};

} // namespace swabby
