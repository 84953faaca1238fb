#include "state/AppState.h"

#include "engine/Samplers.h"
#include "health/HealthRules.h"
#include "health/HistoryStore.h"
#include "settings/Settings.h"

#include <algorithm>

namespace swabby {
namespace {

constexpr int refreshMilliseconds = 60'000;
constexpr int mostRefreshesAtOnce = 64;

QList<ProcessSample> withoutOwn(QList<ProcessSample> processes, std::int32_t ownPid)
{
    processes.removeIf([&](const ProcessSample &process) {
        return isOwnProcess(process.pid, process.name, process.path, ownPid);
    });
    return processes;
}

std::set<QString> storedPins(SettingsStore &store)
{
    const QStringList names = Settings(store).pinnedProcessNames();
    return {names.begin(), names.end()};
}

HealthThresholds thresholdsFrom(SettingsStore &store)
{
    const Settings settings(store);
    return {.cpuYellow = settings.cpuYellow(),
            .cpuRed = settings.cpuRed(),
            .memYellow = settings.memYellow(),
            .memRed = settings.memRed(),
            .processCpuRed = settings.processCpuRed()};
}

} // namespace

AppState::AppState(std::shared_ptr<Machine> machine, Record record)
    : m_machine(std::move(machine)),
      m_record(record),
      m_sampler(std::make_shared<MachineSampler>(*m_machine)),
      m_bookkeeping(1),
      m_refreshes(mostRefreshesAtOnce)
{
    if (m_record == Record::everything)
        m_historyKeeper = std::make_unique<HistoryKeeper>(m_machine->places.applicationData);
    m_pinnedNames = storedPins(*m_machine->settings);
    m_history = HistoryStore::load(m_machine->places.applicationData, m_machine->clock->now());
    connect(&m_timer, &QTimer::timeout, this, &AppState::refresh);
}

AppState::~AppState()
{
    m_machine->stop.requestStop();
    m_refreshes.wait();
}

void AppState::start()
{
    refresh();
    scheduleTimer();
}

void AppState::scheduleTimer()
{
    // A minute need not be exact; the system may bundle wake-ups.
    m_timer.setTimerType(Qt::VeryCoarseTimer);
    m_timer.start(refreshMilliseconds);
}

void AppState::refresh()
{
    m_refreshes.begin([this, sampler = m_sampler, stop = m_machine->stop.token()] {
        MachineSample sample = sampler->sample();
        if (stop.stopRequested())
            return;
        QMetaObject::invokeMethod(
            this, [this, sample = std::move(sample)] { apply(sample); }, Qt::QueuedConnection);
    });
}

void AppState::apply(const MachineSample &sample)
{
    m_stats = sample.stats;
    m_processes = withoutOwn(sample.processes, m_machine->ownProcessId);
    m_batteryDrainers = withoutOwn(sample.batteryDrainers, m_machine->ownProcessId);
    m_networkUsers = withoutOwn(sample.networkUsers, m_machine->ownProcessId);
    m_browserRollups = sample.browserRollups;
    m_loginItems = sample.loginItems;

    keepHistory();
    m_leakSuspects = m_leakTracker.update(m_processes, m_machine->clock->now());
    judgeHealth();

    ++m_refreshesApplied;
    Q_EMIT changed();
    Q_EMIT applied();
}

void AppState::keepHistory()
{
    const double now = m_machine->clock->now();
    m_history.append({m_stats.timestamp, m_stats.cpuUsagePercent, memoryPercent(m_stats)});
    m_history.removeIf([&](const HistoryPoint &point) { return point.date < now - historySpanSeconds; });
    if (m_historyKeeper)
        m_historyKeeper->keep(m_history, now);
}

void AppState::judgeHealth()
{
    // A pinned program is one the user knows about: it never raises an issue.
    QList<ProcessSample> healthInput = m_processes;
    healthInput.removeIf([&](const ProcessSample &process) { return m_pinnedNames.contains(process.name); });

    const HealthVerdict verdict = computeHealth(m_stats, healthInput, thresholdsFrom(*m_machine->settings));
    const bool hasJustTurnedRed = verdict.level == HealthLevel::red && m_health != HealthLevel::red;
    m_health = verdict.level;
    m_healthIssues = verdict.issues;
    if (!hasJustTurnedRed)
        return;
    Q_EMIT turnedRed(healthInput);
    if (m_record == Record::everything)
        countAttention();
}

void AppState::countAttention()
{
    m_bookkeeping.queue([machine = m_machine] { Settings(*machine->settings).addAttention(); });
}

void AppState::togglePin(const QString &name)
{
    // From what is stored, since another program may have pinned meanwhile.
    m_pinnedNames = storedPins(*m_machine->settings);
    if (m_pinnedNames.erase(name) == 0)
        m_pinnedNames.insert(name);
    Settings(*m_machine->settings).setPinnedProcessNames({m_pinnedNames.begin(), m_pinnedNames.end()});
    Q_EMIT changed();
}

void AppState::requestMainSection(std::optional<MainSection> section)
{
    m_requestedMainSection = section;
    Q_EMIT changed();
}

void AppState::snoozeUntil(std::optional<double> time)
{
    m_snoozedUntil = time;
    Q_EMIT changed();
}

void AppState::removeProcess(std::int32_t pid)
{
    for (QList<ProcessSample> *list : {&m_processes, &m_batteryDrainers, &m_networkUsers})
        list->removeIf([&](const ProcessSample &process) { return process.pid == pid; });
    m_leakSuspects.removeIf([&](const LeakSuspect &suspect) { return suspect.pid == pid; });
    Q_EMIT changed();
}

void AppState::removeLoginItem(const QString &id)
{
    m_loginItems.removeIf([&](const LoginItem &item) { return item.id() == id; });
    Q_EMIT changed();
}

void AppState::noteStoredSetting()
{
    Q_EMIT changed();
}

void AppState::setScanning(bool isScanning)
{
    m_isScanning = isScanning;
    Q_EMIT changed();
}

void AppState::setLastScan(double time)
{
    m_lastScan = time;
    Q_EMIT changed();
}

void AppState::setRemoving(bool isRemoving)
{
    m_isRemoving = isRemoving;
    Q_EMIT changed();
}

void AppState::setLastCleanupSuccess(const std::optional<CleanupSuccess> &success)
{
    m_lastCleanupSuccess = success;
    Q_EMIT changed();
}

} // namespace swabby
