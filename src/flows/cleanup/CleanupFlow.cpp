#include "flows/cleanup/CleanupFlow.h"

#include "cleanup/PutBackRecord.h"
#include "cleanup/RemovalRun.h"
#include "cleanup/Search.h"
#include "settings/Settings.h"

#include <QtCore/QTimer>

namespace swabby {
namespace {

constexpr int runsAtOnce = 8;

bool hasSomethingToPutBack(const Machine &machine)
{
    return !PutBackRecord(machine.places.applicationData).isEmpty();
}

/// What a removal did, and whether there is something to put back since.
struct Finished {
    CleanupReport report;
    bool canPutBack = false;
};

/// The whole background half of a removal.
Finished carryOut(const std::vector<RemovableItem> &items, Machine &machine, const StopToken &stop)
{
    const RemovalOutcome outcome = removeItems(items, excludeListFrom(machine), machine, stop);
    const std::int64_t freed = outcome.problem.isEmpty() ? totalBytes(items) : 0;
    // A run that was ended with the program is reported nowhere, the week included.
    if (freed >= 1 && !stop.stopRequested() && !machine.stop.token().stopRequested())
        Settings(*machine.settings).add(setting<"weeklyBytesFreed">, freed);
    return {.report = {.id = QUuid::createUuid(),
                       .itemCount = static_cast<qint64>(items.size()),
                       .freedBytes = freed,
                       .left = outcome.left,
                       .canBePutBack = static_cast<qint64>(outcome.trashed.size()),
                       .isRecordable = outcome.isRecordable,
                       .problem = outcome.problem},
            .canPutBack = hasSomethingToPutBack(machine)};
}

} // namespace

CleanupFlow::CleanupFlow(AppState &state, std::chrono::milliseconds bannerTime)
    : m_state(state), m_bannerTime(bannerTime), m_work(runsAtOnce)
{
    lookForRecord();
}

void CleanupFlow::lookForRecord()
{
    const auto looking =
        m_work.ask([machine = m_state.sharedMachine()] { return hasSomethingToPutBack(*machine); });
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
    m_answers.whenDone(running, [this](const Finished &finished) {
        --m_runs;
        m_canPutBack = finished.canPutBack;
        m_state.setRemoving(false);
        showBanner(finished.report);
        Q_EMIT removed(finished.report);
    });
    Q_EMIT begun(items);
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
        const auto outcome = PutBackRecord(machine->places.applicationData).putBackAll(*machine->disposal);
        return std::pair(outcome, hasSomethingToPutBack(*machine));
    });
    m_answers.whenDone(restoring, [this](const auto &result) {
        const auto &[outcome, canPutBack] = result;
        // A removal that began meanwhile may have finished too.
        m_canPutBack = canPutBack;
        m_state.setLastCleanup(std::nullopt);
        Q_EMIT restored(outcome.restored, outcome.left);
    });
}

} // namespace swabby
