#pragma once

#include "cleanup/DeveloperCleanup.h"
#include "cleanup/RemovableItem.h"
#include "platform/BackgroundWork.h"
#include "platform/ScanControl.h"
#include "state/AppState.h"

#include <QCoroTask>

#include <QtCore/QObject>

#include <memory>
#include <vector>

namespace swabby {

/// What developers' tools have piled up, as far as it is offered for removal.
struct DeveloperClutter {
    std::vector<RemovableItem> oldRuntimes; ///< not used for two weeks or more
    std::int64_t buildCacheBytes = 0;
    DeveloperCleanup::DockerStatus docker;

    bool isEmpty() const;
};

/// The runtimes that were used once, and not for two weeks.
std::vector<RemovableItem> oldRuntimes(const std::vector<SimulatorRuntimeInfo> &runtimes);

/// The developer panel's search. Main thread.
class DeveloperScan : public QObject {
    Q_OBJECT

public:
    explicit DeveloperScan(AppState &state);
    /// Ends the search.
    ~DeveloperScan() override;

    /// Begins a search; one that still runs is ended and forgotten.
    void begin();
    /// Ends a search without a result.
    void stop();

    bool isScanning() const { return m_isScanning; }
    /// Whether a search was run to its end.
    bool isDone() const { return m_isDone; }
    const ScanProgress &progress() const { return m_progress; }
    const DeveloperClutter &clutter() const { return m_clutter; }

    /// Takes what a confirmed removal removes off the result.
    void forget(const std::vector<RemovableItem> &removed);
    /// Whether that has happened since the result was found.
    bool hasForgotten() const { return m_hasForgotten; }

Q_SIGNALS:
    void changed();

private:
    QCoro::Task<> search(int number, ScanControl control);

    AppState &m_state;
    DeveloperClutter m_clutter;
    ScanProgress m_progress;
    bool m_isScanning = false;
    bool m_isDone = false;
    bool m_hasForgotten = false;
    int m_number = 0; ///< of the latest search; an older one publishes nothing
    std::unique_ptr<StopSource> m_stop;
    BackgroundWork m_work; // last, so that it is waited for while everything it uses still stands
};

} // namespace swabby
