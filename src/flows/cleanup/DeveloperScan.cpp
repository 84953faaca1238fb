#include "flows/cleanup/DeveloperScan.h"

#include "cleanup/Scans.h"
#include "flows/cleanup/ProgressRelay.h"

#include <QCoroFuture>

#include <QtCore/QPointer>

#include <algorithm>

namespace swabby {
namespace {

/// One that was ended may take a moment to be over.
constexpr int searchesAtOnce = 2;

constexpr std::int64_t oldAfterDays = 14;

DeveloperClutter clutterOf(const Machine &machine, const ScanControl &control)
{
    const ExcludeList excludes = excludeListFrom(*machine.settings);
    DeveloperClutter clutter;
    clutter.oldRuntimes = oldRuntimes(DeveloperCleanup::scanSimulatorRuntimes(machine, control));
    clutter.buildCacheBytes = DeveloperCleanup::derivedDataSize(machine, control, excludes);
    clutter.docker = DeveloperCleanup::dockerStatus(machine, control);
    return clutter;
}

} // namespace

bool DeveloperClutter::isEmpty() const
{
    return oldRuntimes.empty() && buildCacheBytes == 0 &&
           docker.state == DeveloperCleanup::DockerState::notInstalled;
}

std::vector<RemovableItem> oldRuntimes(const std::vector<SimulatorRuntimeInfo> &runtimes)
{
    std::vector<RemovableItem> items;
    for (const SimulatorRuntimeInfo &runtime : runtimes)
        if (runtime.daysSinceUsed && *runtime.daysSinceUsed >= oldAfterDays)
            items.push_back(RemovableItem::fromSimulator(runtime));
    return items;
}

DeveloperScan::DeveloperScan(AppState &state) : m_state(state), m_work(searchesAtOnce) {}

DeveloperScan::~DeveloperScan()
{
    if (m_stop)
        m_stop->requestStop();
}

void DeveloperScan::begin()
{
    if (m_stop)
        m_stop->requestStop();
    m_stop = std::make_unique<StopSource>();
    const int number = ++m_number;
    m_isScanning = true;
    m_progress = {};
    Q_EMIT changed();
    search(number, {.stop = m_stop->token(),
                    .progress = relayProgress(this, [this, number](const ScanProgress &progress) {
                        if (number != m_number || !m_isScanning)
                            return;
                        m_progress = progress;
                        Q_EMIT changed();
                    })});
}

void DeveloperScan::stop()
{
    if (!m_isScanning)
        return;
    m_stop->requestStop();
    ++m_number;
    m_isScanning = false;
    Q_EMIT changed();
}

QCoro::Task<> DeveloperScan::search(int number, ScanControl control)
{
    const QPointer self(this);
    const auto searching =
        m_work.ask([machine = m_state.sharedMachine(), control] { return clutterOf(*machine, control); });
    DeveloperClutter clutter = co_await searching;
    if (!self || number != m_number)
        co_return;
    m_clutter = std::move(clutter);
    m_isScanning = false;
    m_isDone = true;
    m_hasForgotten = false;
    Q_EMIT changed();
}

void DeveloperScan::forget(const std::vector<RemovableItem> &removed)
{
    m_hasForgotten = true;
    for (const RemovableItem &item : removed) {
        std::vector<RemovableItem> &runtimes = m_clutter.oldRuntimes;
        runtimes.erase(std::remove_if(runtimes.begin(), runtimes.end(),
                                      [&](const RemovableItem &known) { return known.id == item.id; }),
                       runtimes.end());
        if (std::holds_alternative<DerivedData>(item.kind))
            m_clutter.buildCacheBytes = 0;
        if (std::holds_alternative<DockerPrune>(item.kind))
            m_clutter.docker = {};
    }
    Q_EMIT changed();
}

} // namespace swabby
