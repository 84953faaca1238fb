#pragma once

#include "ai/CloudAI.h"
#include "cleanup/CacheEntry.h"
#include "cleanup/ExcludeList.h"
#include "cleanup/RemovableItem.h"
#include "platform/BackgroundWork.h"
#include "platform/ScanControl.h"
#include "state/AppState.h"

#include <QtCore/QObject>

#include <array>
#include <functional>
#include <memory>
#include <set>
#include <vector>

namespace swabby {

/// What the storage panel searches for. A quick clean also looks for other large caches and asks about them.
enum class ClutterKind { quickClean, duplicates, forgottenFiles, applications };

/// Looks for what can be cleaned, each kind by itself and off the main thread. Nothing is removed by it. Main
/// thread.
class StorageScans : public QObject {
    Q_OBJECT

public:
    /// What one search found. The last results stand until a search that was run to its end replaces them.
    struct Findings {
        bool isScanning = false;
        bool isDone = false; ///< one was run to its end
        ScanProgress progress;
        std::vector<RemovableItem> items; ///< applications without what they leave behind
    };

    StorageScans(AppState &state, CloudAI &ai);
    /// Ends the searches.
    ~StorageScans() override;

    /// Begins a search; one that still runs is ended and forgotten.
    void begin(ClutterKind scan);
    /// Ends a search without a result.
    void stop(ClutterKind scan);
    const Findings &findings(ClutterKind scan) const { return runOf(scan).findings; }
    /// The other caches and what the assistant thinks of them; of the quick clean.
    const std::vector<SuggestedCache> &suggestions() const { return m_suggestions; }
    /// Whether names and sizes left this computer for those.
    bool wasSent() const { return m_wasSent; }

    /// Looks for what that application leaves behind; prepared() or stillRuns() tells.
    void prepare(const QString &id);
    bool isPrepared(const QString &id) const { return m_preparing.count(id) != 0; }
    bool isRunning(const QString &id) const { return m_running.count(id) != 0; }

    /// Takes what a confirmed removal removes off the results.
    void forget(const std::vector<RemovableItem> &removed);
    /// Searches again where the last removal took something off: not all of it went, or it is back.
    void lookAgain();

Q_SIGNALS:
    void changed();
    /// An application with everything that goes with it.
    void prepared(const swabby::RemovableItem &item);
    /// An application that has to be quit first.
    void stillRuns(const QString &name);

private:
    struct Run {
        Findings findings;
        int number = 0; ///< of the latest search; an older one publishes nothing
        std::unique_ptr<StopSource> stop;
    };
    using Search = std::function<std::vector<RemovableItem>(
        const Machine &machine, const ScanControl &control, const ExcludeList &excludes)>;

    Run &runOf(ClutterKind scan) { return m_runs.at(static_cast<std::size_t>(scan)); }
    const Run &runOf(ClutterKind scan) const { return m_runs.at(static_cast<std::size_t>(scan)); }
    ScanControl control(ClutterKind scan, int number);
    QCoro::Task<> search(ClutterKind scan, int number, ScanControl control, Search find);
    QCoro::Task<> quickClean(int number, ScanControl control);
    QCoro::Task<> listApplications(int number, ScanControl control);
    QCoro::Task<> findLeftovers(InstalledApp app, QString id);
    void finish(ClutterKind scan, std::vector<RemovableItem> items);

    AppState &m_state;
    CloudAI &m_ai;
    std::array<Run, 4> m_runs;
    std::vector<SuggestedCache> m_suggestions;
    bool m_wasSent = false;
    std::set<ClutterKind> m_touched; ///< by the last removal
    std::set<QString> m_preparing;
    std::set<QString> m_running;
    StopSource m_ending;
    BackgroundWork m_work; // last, so that it is waited for while everything it uses still stands
};

} // namespace swabby
