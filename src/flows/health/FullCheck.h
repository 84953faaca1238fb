#pragma once

#include "ai/CloudAI.h"
#include "cleanup/Engines.h"
#include "flows/cleanup/RemovalsUnderWay.h"
#include "platform/BackgroundWork.h"
#include "platform/LatestRun.h"
#include "state/AppState.h"

#include <QtCore/QObject>

#include <optional>
#include <set>
#include <vector>

namespace swabby {

/// The outcome of one check.
struct SwabbyCheckResult {
    std::vector<RemovableItem> removalCandidates;
    QList<LoginItem> loginItemsToReview;
    std::optional<ProcessSample> processToWatch;
    QString headline;
    QString summary;
    QString problem; ///< why there is no result, without a full stop; else empty
    /// Whether counts and sizes left this computer for the summary.
    bool wasSent = false;
    /// To where, when the person chose that address; else empty.
    QString host;
    /// Why the assistant did not sum up or judge a folder; none when it did.
    std::optional<ModelFailure> failure;

    /// Everything there is to see, ignored or not.
    qint64 findings() const;
};

/// The startup items worth a second look that can be turned off here.
QList<LoginItem> loginItemsToReview(const QList<LoginItem> &items);

/// The one program worth watching: the first at or above 0.7 of the stored limit for a single program, else
/// the biggest drain on the battery. storedLimit is undefined when nobody has stored one.
std::optional<ProcessSample> processToWatch(const AppState &state, const QJsonValue &storedLimit);

/// The one-tap full check: six scans at once in the background, awaited in a fixed order, then a sentence or
/// two about what they found. Nothing is removed, turned off or quit by it. Main thread.
class FullCheck : public QObject {
    Q_OBJECT

public:
    enum class Phase { scanning, done };

    FullCheck(AppState &state, CloudAI &ai);
    /// Ends the scans of a check that is left.
    ~FullCheck() override;

    /// Begins a check; one that still runs is ended and forgotten.
    void run();
    /// Ends a check that runs, without a result.
    void cancel();

    Phase phase() const { return m_run.isUnderWay() ? Phase::scanning : Phase::done; }
    const SwabbyCheckResult &result() const { return m_result; }
    /// The texts of the steps, in their order.
    static QStringList steps();
    /// The steps that are done, in the order they were.
    const QStringList &completedSteps() const { return m_completedSteps; }
    /// What is being looked at, for people.
    const QString &lookingAt() const { return m_lookingAt; }
    const std::set<QString> &selectedRemovalIDs() const { return m_selectedRemovalIDs; }
    const std::set<QString> &dismissedLoginItemIDs() const { return m_dismissedLoginItemIDs; }

    void setSelected(const QString &removalID, bool isSelected);
    /// Every candidate, or none.
    void setAllSelected(bool isSelected);
    /// Takes what a removal that begins removes off the result, and off what a check under way will find.
    void forget(const std::vector<RemovableItem> &removed);
    /// A removal is over, and these stayed.
    void endRemoval(const std::vector<RemovableItem> &left);
    bool isRemoving() const { return !m_removals.isEmpty(); }
    /// Those of what was removed are there after all: what was found of them and around them is listed again.
    void takeBack(const std::vector<RemovableItem> &there);
    /// What was removed of the result and has not been listed again.
    const std::vector<RemovableItem> &removedSince() const { return m_removedSince; }
    /// The Trash as it is now takes the place of what was found of it.
    void readTrashAgain();
    /// Hides a startup item for the rest of this result.
    void dismiss(const QString &loginItemID);
    /// The candidates whose box is ticked, in their order.
    std::vector<RemovableItem> selectedItems() const;
    /// How many they are.
    std::size_t selectedCount() const;
    /// "Remove Everything", or how many.
    QString removeLabel() const;

Q_SIGNALS:
    void changed();
    void lookingAtChanged();
    /// A step is done.
    void stepCompleted(const QString &step);
    /// The result stands.
    void finished();

private:
    QCoro::Task<> check(ScanControl control);
    struct Found;
    QFuture<Found> begin(CleanupEngine engine, const ScanControl &control);
    void finish(SwabbyCheckResult result);
    void showWhatIsLeft();
    void complete(const QString &step);

    AppState &m_state;
    CloudAI &m_ai;
    SwabbyCheckResult m_result;
    std::vector<RemovableItem> m_found; ///< the candidates, whatever of them is gone
    std::vector<RemovableItem> m_gone;  ///< since the check began, or going then
    std::vector<RemovableItem> m_removedSince;
    RemovalsUnderWay m_removals;
    QStringList m_completedSteps;
    QString m_lookingAt;
    std::set<QString> m_selectedRemovalIDs;
    std::set<QString> m_dismissedLoginItemIDs;
    // Last, so that the work is told to stop, then waited for while everything it uses still stands.
    BackgroundWork m_work;
    LatestRun m_run;
    LatestRun m_trashReading;
};

} // namespace swabby
