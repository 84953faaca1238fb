#include "state/MachineSampler.h"

#include "engine/Samplers.h"
#include "startup/LoginItemScanner.h"

#include <algorithm>

namespace swabby {
namespace {

constexpr int topListLength = 8;
constexpr std::size_t consumerListLength = 6;

/// The largest consumers of a figure by pid, looked up and largest first. A pid that is gone drops out.
template <typename Figure>
QList<ProcessSample> largestConsumers(const std::unordered_map<std::int32_t, Figure> &figures,
                                      Figure ProcessSample::*field, ProcessSurvey &survey,
                                      std::int32_t ownPid)
{
    std::vector<std::pair<std::int32_t, Figure>> ranked(figures.begin(), figures.end());
    const auto end =
        ranked.begin() + static_cast<std::ptrdiff_t>(std::min(ranked.size(), consumerListLength));
    std::partial_sort(ranked.begin(), end, ranked.end(), [](const auto &a, const auto &b) {
        return a.second != b.second ? a.second > b.second : a.first < b.first;
    });
    std::unordered_set<std::int32_t> pids;
    for (auto entry = ranked.begin(); entry != end; ++entry)
        pids.insert(entry->first);

    QList<ProcessSample> consumers;
    for (auto &[pid, process] : ProcessSampler::processes(survey, pids, ownPid)) {
        process.*field = figures.at(pid);
        consumers.append(process);
    }
    std::stable_sort(consumers.begin(), consumers.end(),
                     [&](const ProcessSample &a, const ProcessSample &b) { return a.*field > b.*field; });
    return consumers;
}

} // namespace

MachineSample MachineSampler::sample()
{
    MachineSample sample;
    SystemStats &stats = sample.stats;
    const std::int32_t ownPid = m_machine.ownProcessId;
    const std::unique_ptr<ProcessSurvey> survey = m_machine.processes->begin();

    stats.memTotalBytes = m_machine.kernel->physicalMemory();
    const MemoryMonitor::Figures memory = MemoryMonitor::sample(*m_machine.kernel, stats.memTotalBytes);
    stats.memUsedBytes = memory.usedBytes;
    stats.memPressurePercent = memory.pressurePercent;
    stats.swapUsedBytes = memory.swapUsed;
    const VolumeCapacity volume = m_machine.kernel->startupVolume();
    stats.diskFreeBytes = volume.freeBytes;
    stats.diskTotalBytes = volume.totalBytes;
    stats.diskMountPoint = volume.mountPoint;
    const BatteryMonitor::Charge charge = BatteryMonitor::sample(*m_machine.power);
    stats.batteryPercent = charge.percent;
    stats.isCharging = charge.charging;
    stats.timeRemainingMinutes = charge.minutesRemaining;
    stats.thermalState = m_machine.kernel->thermalState();
    if (charge.percent) {
        const BatteryHealth health = batteryHealth();
        stats.batteryCycleCount = health.cycles;
        stats.batteryHealthPercent = health.healthPercent;
    }

    sample.processes = ProcessSampler::topProcesses(*survey, topListLength, ownPid);
    sample.loginItems = LoginItemScanner::scan(*m_machine.startup, *m_machine.boot);

    const auto power = PowerSampler::sample(*survey, ownPid);
    for (ProcessSample &process : sample.processes)
        if (const auto figure = power.find(process.pid); figure != power.end())
            process.energyImpact = figure->second;
    sample.batteryDrainers = largestConsumers(power, &ProcessSample::energyImpact, *survey, ownPid);

    const auto traffic = NetworkSampler::sample(*survey);
    sample.networkUsers = largestConsumers(traffic, &ProcessSample::networkBytesPerSec, *survey, ownPid);

    sample.browserRollups = BrowserRollup::sample(*survey);
    // Last, so that the first load of all is one of at least the second that the survey takes.
    stats.cpuUsagePercent = m_cpuMonitor.sample(*m_machine.kernel);
    stats.timestamp = m_machine.clock->now();
    return sample;
}

BatteryHealth MachineSampler::batteryHealth()
{
    constexpr double shelfLifeSeconds = 300;
    std::unique_lock guard(m_batteryMutex);
    const double now = m_machine.clock->now();
    const bool isFresh = m_lastBatteryHealthFetch && now - *m_lastBatteryHealthFetch < shelfLifeSeconds;
    // A report that never ends costs the refresh that asked for it; the others go on with the last one.
    if (isFresh || m_batteryHealthIsBeingRead)
        return m_cachedBatteryHealth;
    m_batteryHealthIsBeingRead = true;
    guard.unlock();
    const BatteryHealth health = m_machine.power->healthAndCycles();
    guard.lock();
    m_batteryHealthIsBeingRead = false;
    m_cachedBatteryHealth = health;
    m_lastBatteryHealthFetch = m_machine.clock->now();
    return health;
}

} // namespace swabby
