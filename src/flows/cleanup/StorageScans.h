#pragma once

#include "cleanup/DeveloperCleanup.h"
#include "flows/cleanup/CacheVetting.h"
#include "flows/cleanup/RemovalsUnderWay.h"
#include "platform/BackgroundWork.h"
#include "platform/LatestRun.h"
#include "state/AppState.h"

#include <QtCore/QObject>

#include <array>
#include <map>
#include <set>
#include <vector>

namespace swabby {

/// What the storage and developer panels search for. A quick clean also looks for other large caches and asks
/// about them; developer clutter is offered as far as it has not been used for a while.
enum class ClutterKind { quickClean, duplicates, forgottenFiles, applications, developer };

/// The runtimes that were used once, and not for two weeks.
std::vector<RemovableItem> oldRuntimes(const std::vector<SimulatorRuntimeInfo> &runtimes);

/// Looks for what can be cleaned, each kind by itself and off the main thread. Nothing is removed by it. Main
/// thread.
class StorageScans : public QObject {
    Q_OBJECT

public:
    /// What one search found.
    struct Findings {
        std::vector<RemovableItem> items = {};        ///< applications without what they leave behind
        std::vector<SuggestedCache> suggestions = {}; ///< other caches and what the assistant thinks of them
        bool wasSent = false; ///< whether names and sizes left this computer for those
        QString host = {};    ///< to where, when the person chose that address
        std::optional<ModelFailure> failure =
            std::nullopt;                             ///< why the assistant did not answer, if it did not
        std::map<QString, std::int32_t> running = {}; ///< by the ids of applications that run, their process
        DeveloperCleanup::DockerStatus docker = {};   ///< its rows stay when its item was removed
        QString problem = {}; ///< why nothing was searched, without a full stop; else empty

        /// The items and the suggestions that look safe.
        std::vector<RemovableItem> offers() const;
        /// The other suggestions, which a person looks over one at a time.
        std::vector<RemovableItem> unfamiliar() const;
        /// The suggestion of that folder.
        const SuggestedCache *suggestionOf(const QString &id) const;
        /// Whether there is nothing to show.
        bool isEmpty() const;
    };

    StorageScans(AppState &state, CloudAI &ai);

    /// Begins a search; one that still runs is ended and forgotten.
    void begin(ClutterKind kind);
    /// Ends a search without a result.
    void stop(ClutterKind kind);
    bool isScanning(ClutterKind kind) const { return searchFor(kind).run.isUnderWay(); }
    /// Whether one was run to its end.
    bool isDone(ClutterKind kind) const { return searchFor(kind).isDone; }
    /// Of the latest search.
    const ScanProgress &progress(ClutterKind kind) const { return searchFor(kind).progress; }
    /// The last results, until a search that was run to its end replaces them.
    const Findings &findings(ClutterKind kind) const { return searchFor(kind).findings; }

    /// Looks for what that application leaves behind; prepared() or stillRuns() tells.
    void prepare(const QString &id);
    /// Looks which process that application runs as; runsAs() tells, unless it does not run any more.
    void findProcess(const QString &id);
    /// Looks again which applications run.
    void lookWhoRuns();
    bool isPrepared(const QString &id) const { return m_preparing.count(id) != 0; }

    /// Takes what a removal that begins removes off the results, and off what a search under way will find.
    void forget(const std::vector<RemovableItem> &removed);
    /// A removal is over, and these stayed: then it searches again.
    void endRemoval(const std::vector<RemovableItem> &left);
    /// The Trash as it is now takes the place of what was found of it; for what lies there changes with every
    /// removal.
    void readTrashAgain();
    /// Searches again where a removal took something off since: not all of it went, or it is back.
    void lookAgain();

Q_SIGNALS:
    void changed();
    /// An application with everything that goes with it.
    void prepared(const swabby::RemovableItem &item);
    /// An application that has to be quit first.
    void stillRuns(const QString &name);
    void runsAs(const swabby::ProcessSample &process);

private:
    struct Search {
        LatestRun run;
        bool isDone = false;
        ScanProgress progress;
        Findings findings;
        bool isTouched = false;               ///< by a removal since lookAgain()
        std::vector<RemovableItem> gone = {}; ///< since the search under way began, or going then
    };

    Search &searchFor(ClutterKind kind) { return m_searches.at(static_cast<std::size_t>(kind)); }
    const Search &searchFor(ClutterKind kind) const { return m_searches.at(static_cast<std::size_t>(kind)); }
    QCoro::Task<> quickClean(ScanControl control);
    void finish(ClutterKind kind, Findings findings);
    void end(Search &search);
    static void takeOff(const std::vector<RemovableItem> &gone, Search &search);

    AppState &m_state;
    CloudAI &m_ai;
    std::set<QString> m_preparing;
    RemovalsUnderWay m_removals;
    bool m_mustReadTrash = false; ///< when the quick clean is over
    // Last, so that the work is told to stop, then waited for while everything it uses still stands.
    BackgroundWork m_work;
    LatestRun m_preparations;
    LatestRun m_looks; ///< at which applications run
    LatestRun m_trashReading;
    std::array<Search, 5> m_searches;
};

} // namespace swabby
