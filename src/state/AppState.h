#pragma once

#include "cleanup/CleanupSuccess.h"
#include "engine/BrowserRollupEntry.h"
#include "engine/HistoryPoint.h"
#include "engine/SystemStats.h"
#include "health/HealthIssue.h"
#include "health/HistoryKeeper.h"
#include "health/LeakDetection.h"
#include "health/LeakSuspect.h"
#include "platform/BackgroundWork.h"
#include "platform/Machine.h"
#include "startup/LoginItem.h"
#include "state/MachineSampler.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <memory>
#include <optional>
#include <set>

namespace swabby {

/// Whether a program's refreshes leave traces: the day's history and the week's counters.
enum class Record { everything, nothing };

/// The one central, observable state. It owns the latest figures and runs the refresh cycle: once a
/// minute everything is sampled on background work and applied on the main thread, the only writer of
/// what is published. Windows read it and call its intents; it never calls upwards, it announces.
class AppState : public QObject {
    Q_OBJECT

public:
    /// Loads the pins and the day's history; start() begins the cycle.
    AppState(std::shared_ptr<Machine> machine, Record record);
    /// Ends every tool that still runs for this state and waits for its background work.
    ~AppState() override;

    /// One refresh now and one every 60 seconds from here on.
    void start();
    /// Begins one refresh and returns at once. Refreshes may overlap; each applies when it is done. With
    /// 64 of them stuck in tools that never end, further ones are not begun.
    void refresh();
    /// (Re)starts the 60-second timer.
    void scheduleTimer();
    /// Adds the name to the pins or takes it away, and stores them.
    void togglePin(const QString &name);
    /// Asks the main window to show a section; the window clears it.
    void requestMainSection(std::optional<MainSection> section);
    /// Silences the notifications until that time, seconds since 1970; absent lifts it.
    void snoozeUntil(std::optional<double> time);
    /// Takes a program off the lists at once, before the next refresh would.
    void removeProcess(std::int32_t pid);
    /// The same for a startup item.
    void removeLoginItem(const QString &id);
    /// A setting has been stored: whoever shows what it decides looks again.
    void noteStoredSetting();
    void setScanning(bool isScanning);
    /// Seconds since 1970.
    void setLastScan(double time);
    void setRemoving(bool isRemoving);
    void setLastCleanupSuccess(const std::optional<CleanupSuccess> &success);
    /// The live snapshot in plain lines, as the assistant is given it.
    QString systemContextSummary() const;

    Machine &machine() const { return *m_machine; }
    std::shared_ptr<Machine> sharedMachine() const { return m_machine; }
    /// Where counters and dates are read and written: off the main thread, one after the other in the order
    /// asked.
    BackgroundWork &bookkeeping() { return m_bookkeeping; }
    /// Whether refreshes leave traces.
    Record record() const { return m_record; }

    const SystemStats &stats() const { return m_stats; }
    const QList<ProcessSample> &processes() const { return m_processes; }
    const QList<ProcessSample> &batteryDrainers() const { return m_batteryDrainers; }
    const QList<ProcessSample> &networkUsers() const { return m_networkUsers; }
    const QList<BrowserRollupEntry> &browserRollups() const { return m_browserRollups; }
    const QList<LoginItem> &loginItems() const { return m_loginItems; }
    const History &history() const { return m_history; }
    HealthLevel health() const { return m_health; }
    const QList<HealthIssue> &healthIssues() const { return m_healthIssues; }
    /// Seconds since 1970 of the last full check.
    std::optional<double> lastScan() const { return m_lastScan; }
    bool isScanning() const { return m_isScanning; }
    std::optional<double> snoozedUntil() const { return m_snoozedUntil; }
    const QList<LeakSuspect> &leakSuspects() const { return m_leakSuspects; }
    const std::set<QString> &pinnedNames() const { return m_pinnedNames; }
    /// Whether a removal runs.
    bool isRemoving() const { return m_isRemoving; }
    /// The last removal's result while its banner is up.
    const std::optional<CleanupSuccess> &lastCleanupSuccess() const { return m_lastCleanupSuccess; }
    std::optional<MainSection> requestedMainSection() const { return m_requestedMainSection; }
    /// Refreshes applied so far; 0 while the first one still runs.
    int refreshesApplied() const { return m_refreshesApplied; }

Q_SIGNALS:
    /// Some published field changed.
    void changed();
    /// A refresh was applied whole.
    void applied();
    /// The health has just turned red; the processes that count towards health, busiest first.
    void turnedRed(const QList<swabby::ProcessSample> &healthInput);

private:
    void apply(const MachineSample &sample);
    void keepHistory();
    void judgeHealth();
    void countAttention();

    std::shared_ptr<Machine> m_machine;
    Record m_record;
    std::shared_ptr<MachineSampler> m_sampler;
    std::unique_ptr<HistoryKeeper> m_historyKeeper;
    LeakTracker m_leakTracker;
    QTimer m_timer;

    SystemStats m_stats;
    QList<ProcessSample> m_processes;
    QList<ProcessSample> m_batteryDrainers;
    QList<ProcessSample> m_networkUsers;
    QList<BrowserRollupEntry> m_browserRollups;
    QList<LoginItem> m_loginItems;
    History m_history;
    HealthLevel m_health = HealthLevel::green;
    QList<HealthIssue> m_healthIssues;
    std::optional<double> m_lastScan;
    bool m_isScanning = false;
    std::optional<double> m_snoozedUntil;
    QList<LeakSuspect> m_leakSuspects;
    std::set<QString> m_pinnedNames;
    bool m_isRemoving = false;
    std::optional<CleanupSuccess> m_lastCleanupSuccess;
    std::optional<MainSection> m_requestedMainSection;
    int m_refreshesApplied = 0;

    BackgroundWork m_bookkeeping;
    BackgroundWork m_refreshes; // last, so that it is waited for while everything it uses still stands
};

} // namespace swabby
