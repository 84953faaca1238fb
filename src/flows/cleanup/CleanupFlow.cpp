#include "flows/cleanup/CleanupFlow.h"

#include "cleanup/PutBackRecord.h"
#include "cleanup/RemovalRun.h"
#include "cleanup/Search.h"
#include "settings/Settings.h"

#include <QtCore/QTimer>

namespace swabby {
namespace {

constexpr int runsAtOnce = 8;

/// The whole background half of a removal.
CleanupReport carryOut(const std::vector<RemovableItem> &items, Machine &machine, const StopToken &stop)
{
    const RemovalOutcome outcome = removeItems(items, excludeListFrom(machine), machine, stop);
    const std::int64_t freed = outcome.problem.isEmpty() ? totalBytes(items) : 0;
    // A run that was ended with the program is reported nowhere, the week included.
    if (freed >= 1 && !stop.stopRequested() && !machine.stop.token().stopRequested())
        Settings(*machine.settings).add(setting<"weeklyBytesFreed">, freed);
    return {.id = QUuid::createUuid(),
            .itemCount = static_cast<qint64>(items.size()),
            .freedBytes = freed,
            .left = outcome.left,
            .canBePutBack = static_cast<qint64>(outcome.trashed.size()),
            .problem = outcome.problem};
}

} // namespace

CleanupFlow::CleanupFlow(AppState &state, std::chrono::milliseconds bannerTime)
    : m_state(state), m_bannerTime(bannerTime), m_work(runsAtOnce)
{
    lookForRecord();
}

void CleanupFlow::lookForRecord()
{
    const auto looking = m_work.ask([machine = m_state.sharedMachine()] {
        return !PutBackRecord(machine->places.applicationData).load().empty();
    });
    m_answers.whenDone(looking, [this](bool isThere) {
        // A removal that began meanwhile keeps a record of its own.
        if (m_hasRun)
            return;
        m_canPutBack = isThere;
        Q_EMIT putBackChanged();
    });
}

void CleanupFlow::remove(const std::vector<RemovableItem> &items)
{
    if (items.empty())
        return;
    ++m_runs;
    m_hasRun = true;
    m_state.setRemoving(true);
    const auto running = m_work.ask([items, machine = m_state.sharedMachine(), stop = m_answers.join()] {
        return carryOut(items, *machine, stop);
    });
    m_answers.whenDone(running, [this](const CleanupReport &report) { finish(report); });
}

void CleanupFlow::finish(const CleanupReport &report)
{
    --m_runs;
    const bool isOlderKept = m_runs > 0 || !report.problem.isEmpty();
    m_canPutBack = report.canBePutBack > 0 || (isOlderKept && m_canPutBack);
    m_state.setRemoving(false);
    showBanner(report);
    Q_EMIT removed(report);
}

void CleanupFlow::showBanner(const CleanupReport &report)
{
    m_state.setLastCleanup(report);
    QTimer::singleShot(m_bannerTime, this, [this, id = report.id] {
        // A newer run's banner has a time of its own.
        if (m_state.lastCleanup() && m_state.lastCleanup()->id == id)
            m_state.setLastCleanup(std::nullopt);
    });
}

void CleanupFlow::putBack()
{
    if (!canPutBack())
        return;
    m_canPutBack = false;
    const auto restoring = m_work.ask([machine = m_state.sharedMachine()] {
        return PutBackRecord(machine->places.applicationData).putBackAll(*machine->disposal);
    });
    m_answers.whenDone(restoring, [this](const PutBackResult &outcome) {
        m_canPutBack = outcome.left > 0;
        m_state.setLastCleanup(std::nullopt);
        Q_EMIT restored(outcome.restored, outcome.left);
    });
}

} // namespace swabby
