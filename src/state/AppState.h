#pragma once

#include "health/HistoryKeeper.h"
#include "health/LeakDetection.h"
#include "platform/BackgroundWork.h"
#include "platform/Machine.h"
#include "state/Published.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <memory>

namespace swabby {

/// Whether a program's refreshes leave traces: the day's history and the week's counters.
enum class Record { everything, nothing };

/// The one central, observable state. It owns the latest figures and runs the refresh cycle: once a minute
/// everything is sampled on background work and applied on the main thread. Nothing else writes what is
/// published, but for the intents below, which windows and flows call. It never calls upwards, it announces.
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
    /// One refresh for what has just been changed: now, or after the one under way, which may have looked
    /// before.
    void refreshAnew();
    /// Adds the name to the pins or takes it away: published at once, stored on the bookkeeping. What could
    /// not be stored is published no longer then.
    void togglePin(const QString &name);
    /// Asks the main window to show a section; the window clears it.
    void requestMainSection(std::optional<MainSection> section)
    {
        publish(&Published::requestedMainSection, section);
    }
    /// Silences the notifications until that time, seconds since 1970; absent lifts it.
    void snoozeUntil(std::optional<double> time) { publish(&Published::snoozedUntil, time); }
    /// Takes a program off the lists at once, before the next refresh would.
    void removeProcess(std::int32_t pid);
    /// The same for a startup item.
    void removeLoginItem(const QString &id);
    /// A setting has been stored: whoever shows what it decides looks again.
    void noteStoredSetting() { Q_EMIT changed(); }
    void setScanning(bool isScanning) { publish(&Published::isScanning, isScanning); }
    /// Seconds since 1970.
    void setLastScan(double time) { publish(&Published::lastScan, time); }
    void setRemoving(bool isRemoving) { publish(&Published::isRemoving, isRemoving); }
    void setLastCleanup(const std::optional<CleanupReport> &report)
    {
        publish(&Published::lastCleanup, report);
    }
    /// The live snapshot in plain lines, as the assistant is given it.
    QString systemContextSummary() const;

    Machine &machine() const { return *m_machine; }
    std::shared_ptr<Machine> sharedMachine() const { return m_machine; }
    /// Where counters and dates are read and written: off the main thread, one after the other in the order
    /// asked.
    BackgroundWork &bookkeeping() { return m_bookkeeping; }
    /// Whether refreshes leave traces.
    Record record() const { return m_record; }

    /// All of it as one value, and each field of it.
    const Published &published() const { return m_published; }
    const SystemStats &stats() const { return m_published.stats; }
    const QList<ProcessSample> &processes() const { return m_published.processes; }
    const QList<ProcessSample> &batteryDrainers() const { return m_published.batteryDrainers; }
    const QList<ProcessSample> &networkUsers() const { return m_published.networkUsers; }
    const QList<BrowserRollupEntry> &browserRollups() const { return m_published.browserRollups; }
    const QList<LoginItem> &loginItems() const { return m_published.loginItems; }
    const History &history() const { return m_published.history; }
    HealthLevel health() const { return m_published.health; }
    const QList<HealthIssue> &healthIssues() const { return m_published.healthIssues; }
    std::optional<double> lastScan() const { return m_published.lastScan; }
    bool isScanning() const { return m_published.isScanning; }
    std::optional<double> snoozedUntil() const { return m_published.snoozedUntil; }
    const QList<LeakSuspect> &leakSuspects() const { return m_published.leakSuspects; }
    const std::set<QString> &pinnedNames() const { return m_published.pinnedNames; }
    bool isRemoving() const { return m_published.isRemoving; }
    const std::optional<CleanupReport> &lastCleanup() const { return m_published.lastCleanup; }
    std::optional<MainSection> requestedMainSection() const { return m_published.requestedMainSection; }
    const QString &historyTrouble() const { return m_published.historyTrouble; }
    /// Waits until what the refreshes so far recorded is stored, and gives why it could not be.
    QString finishHistory() { return m_historyKeeper ? m_historyKeeper->finish() : QString(); }
    const Permissions::Refused &refused() const { return m_published.refused; }
    int refreshesApplied() const { return m_published.refreshesApplied; }

Q_SIGNALS:
    /// Some published field changed.
    void changed();
    /// A refresh was applied whole.
    void applied();
    /// The history cannot be stored, for this reason: once when that begins, not at every refresh.
    void historyNotStored(const QString &why);
    /// A pin could not be stored and is none any more.
    void pinNotStored();
    /// The health has just turned red; the processes that count towards health, busiest first.
    void turnedRed(const QList<swabby::ProcessSample> &healthInput);

private:
    template <typename Value>
    void publish(Value Published::*field, const std::type_identity_t<Value> &value)
    {
        m_published.*field = value;
        Q_EMIT changed();
    }
    void noteHistoryTrouble(const QString &why);
    void apply(const MachineSample &sample);
    void keepHistory();
    void judgeHealth();

    std::shared_ptr<Machine> m_machine;
    Record m_record;
    std::shared_ptr<MachineSampler> m_sampler;
    std::unique_ptr<HistoryKeeper> m_historyKeeper;
    LeakTracker m_leakTracker;
    QTimer m_timer;

    Published m_published;
    int m_begun = 0;             ///< refreshes
    int m_newestApplied = 0;     ///< which of them, counted from 1
    bool m_wantsAnother = false; ///< one more, after the newest
    int m_pinsOnTheirWay = 0;    ///< published and not stored yet

    BackgroundWork m_bookkeeping;
    BackgroundWork m_refreshes; // last, so that it is waited for while everything it uses still stands
};

} // namespace swabby
