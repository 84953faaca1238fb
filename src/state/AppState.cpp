#include "state/AppState.h"

#include "health/HealthRules.h"
#include "health/HistoryStore.h"
#include "settings/Settings.h"

#include <algorithm>
#include <utility>

namespace swabby {
namespace {

constexpr int refreshMilliseconds = 60'000;
constexpr int mostRefreshesAtOnce = 64;

std::set<QString> storedPins(SettingsStore &store)
{
    const QStringList names = Settings(store).value(setting<"pinnedProcessNames">);
    return {names.begin(), names.end()};
}

HealthThresholds thresholdsFrom(SettingsStore &store)
{
    const Settings settings(store);
    return {.cpuYellow = settings.value(setting<"cpuYellow">),
            .cpuRed = settings.value(setting<"cpuRed">),
            .memYellow = settings.value(setting<"memYellow">),
            .memRed = settings.value(setting<"memRed">),
            .processCpuRed = settings.value(setting<"processCpuRed">)};
}

} // namespace

std::optional<ProcessSample> Published::findProcess(std::int32_t pid) const
{
    for (const auto *list : {&processes, &batteryDrainers, &networkUsers})
        for (const ProcessSample &process : *list)
            if (process.pid == pid)
                return process;
    return std::nullopt;
}

AppState::AppState(std::shared_ptr<Machine> machine, Record record)
    : m_machine(std::move(machine)),
      m_record(record),
      m_sampler(std::make_shared<MachineSampler>(*m_machine)),
      m_bookkeeping(1),
      m_refreshes(mostRefreshesAtOnce)
{
    if (m_record == Record::everything)
        m_historyKeeper =
            std::make_unique<HistoryKeeper>(m_machine->places.applicationData, [this](const QString &why) {
                QMetaObject::invokeMethod(
                    this, [this, why] { noteHistoryTrouble(why); }, Qt::QueuedConnection);
            });
    m_published.pinnedNames = storedPins(*m_machine->settings);
    m_published.history = HistoryStore::load(m_machine->places.applicationData, m_machine->clock->now());
    m_machine->permissions->tell([this](const Permissions::Refused &refused) {
        QMetaObject::invokeMethod(
            this, [this, refused] { publish(&Published::refused, refused); }, Qt::QueuedConnection);
    });
    connect(&m_timer, &QTimer::timeout, this, &AppState::refresh);
}

AppState::~AppState()
{
    m_machine->permissions->tell({});
    m_machine->stop.requestStop();
    m_refreshes.wait();
}

void AppState::start()
{
    refresh();
    // A minute need not be exact; the system may bundle wake-ups.
    m_timer.setTimerType(Qt::VeryCoarseTimer);
    m_timer.start(refreshMilliseconds);
}

void AppState::refresh()
{
    const auto look = [this, sampler = m_sampler, stop = m_machine->stop.token(), turn = m_begun + 1] {
        MachineSample sample = sampler->sample();
        if (stop.stopRequested())
            return;
        const auto take = [this, turn, sample = std::move(sample)] {
            m_newestApplied = std::max(m_newestApplied, turn);
            apply(sample);
        };
        QMetaObject::invokeMethod(this, take, Qt::QueuedConnection);
    };
    m_begun += m_refreshes.begin(look) ? 1 : 0;
}

void AppState::refreshAnew()
{
    // One that was overtaken hangs, perhaps for good.
    m_wantsAnother = m_begun > m_newestApplied;
    if (!m_wantsAnother)
        refresh();
}

void AppState::apply(const MachineSample &sample)
{
    static_cast<MachineSample &>(m_published) = sample;
    keepHistory();
    m_published.leakSuspects = m_leakTracker.update(sample.processes, m_machine->clock->now());
    judgeHealth();
    ++m_published.refreshesApplied;
    Q_EMIT changed();
    Q_EMIT applied();
    if (std::exchange(m_wantsAnother, false))
        refresh();
}

void AppState::keepHistory()
{
    const double now = m_machine->clock->now();
    History &history = m_published.history;
    history.append({stats().timestamp, stats().cpuUsagePercent, memoryPercent(stats())});
    history.removeIf([&](const HistoryPoint &point) { return point.date < now - historySpanSeconds; });
    if (m_historyKeeper)
        m_historyKeeper->keep(history, now);
}

void AppState::noteHistoryTrouble(const QString &why)
{
    publish(&Published::historyTrouble, why);
    if (!why.isEmpty())
        Q_EMIT historyNotStored(why);
}

void AppState::judgeHealth()
{
    // A pinned program is one the user knows about: it never raises an issue.
    QList<ProcessSample> healthInput = processes();
    healthInput.removeIf([&](const ProcessSample &process) { return pinnedNames().contains(process.name); });

    const HealthVerdict verdict =
        computeHealth(stats(), healthInput, thresholdsFrom(*m_machine->settings), m_machine->words);
    const bool hasJustTurnedRed = verdict.level == HealthLevel::red && health() != HealthLevel::red;
    m_published.health = verdict.level;
    m_published.healthIssues = verdict.issues;
    if (!hasJustTurnedRed)
        return;
    Q_EMIT turnedRed(healthInput);
    if (m_record == Record::everything)
        m_bookkeeping.queue(
            [machine = m_machine] { Settings(*machine->settings).add(setting<"weeklyAttentionCount">, 1); });
}

void AppState::togglePin(const QString &name)
{
    std::set<QString> &pins = m_published.pinnedNames;
    // Another program may have pinned meanwhile, but what is on its way is not stored yet.
    if (m_pinsOnTheirWay == 0)
        pins = storedPins(*m_machine->settings);
    const bool isPinned = pins.erase(name) == 0;
    if (isPinned)
        pins.insert(name);
    Q_EMIT changed();
    ++m_pinsOnTheirWay;
    m_bookkeeping.queue([this, machine = m_machine, name, isPinned] {
        const bool isStored = Settings(*machine->settings).setPinned(name, isPinned);
        const auto settle = [this, isStored, stored = storedPins(*machine->settings)] {
            if (!isStored)
                Q_EMIT pinNotStored();
            if (--m_pinsOnTheirWay == 0 && stored != pinnedNames())
                publish(&Published::pinnedNames, stored);
        };
        QMetaObject::invokeMethod(this, settle, Qt::QueuedConnection);
    });
}

void AppState::removeProcess(std::int32_t pid)
{
    for (QList<ProcessSample> *list :
         {&m_published.processes, &m_published.batteryDrainers, &m_published.networkUsers})
        list->removeIf([&](const ProcessSample &process) { return process.pid == pid; });
    m_published.leakSuspects.removeIf([&](const LeakSuspect &suspect) { return suspect.pid == pid; });
    Q_EMIT changed();
}

void AppState::removeLoginItem(const QString &id)
{
    m_published.loginItems.removeIf([&](const LoginItem &item) { return item.id() == id; });
    Q_EMIT changed();
}

} // namespace swabby
