#include "flows/health/FullCheck.h"

#include "cleanup/Overlaps.h"
#include "cleanup/RemovalRun.h"
#include "cleanup/Search.h"
#include "cleanup/TrashItem.h"
#include "engine/ByteCount.h"
#include "flows/cleanup/CacheVetting.h"
#include "settings/Settings.h"

#include <QCoroFuture>

#include <algorithm>
#include <iterator>
#include <utility>

namespace swabby {
namespace {

/// Two checks' worth of scans: those of one that was left may take a moment to end.
constexpr int scansAtOnce = 12;

/// What a developer's tools would have to fetch anew: they decide on it one by one.
bool isBuildTools(const RemovableItem &candidate)
{
    const auto *const cache = std::get_if<CacheEntry>(&candidate.kind);
    return cache && cache->isBuildTool;
}

const QString storageStep = QStringLiteral("Checking storage");
const QString startupStep = QStringLiteral("Checking startup items");
const QString appsStep = QStringLiteral("Checking running apps");
const QString duplicatesStep = QStringLiteral("Looking for duplicate files");
const QString developerStep = QStringLiteral("Checking developer clutter");

} // namespace

qint64 SwabbyCheckResult::findings() const
{
    return static_cast<qint64>(removalCandidates.size()) + loginItemsToReview.size() +
           (processToWatch ? 1 : 0);
}

QList<LoginItem> loginItemsToReview(const QList<LoginItem> &items)
{
    QList<LoginItem> review;
    for (const LoginItem &item : items)
        if (item.deservesALook() && item.canDisableInPlace)
            review.append(item);
    return review;
}

std::optional<ProcessSample> processToWatch(const AppState &state, const QJsonValue &storedLimit)
{
    constexpr double share = 0.7;
    constexpr double thresholdOtherwise = 56;
    const double threshold = storedLimit.isDouble() ? share * storedLimit.toDouble() : thresholdOtherwise;
    for (const ProcessSample &process : state.processes())
        if (process.cpuPercent >= threshold)
            return process;
    return state.batteryDrainers().isEmpty() ? std::nullopt : std::optional(state.batteryDrainers().first());
}

FullCheck::FullCheck(AppState &state, CloudAI &ai) : m_state(state), m_ai(ai), m_work(scansAtOnce) {}

FullCheck::~FullCheck()
{
    if (m_run.isUnderWay())
        m_state.setScanning(false);
}

QStringList FullCheck::steps()
{
    return {storageStep, startupStep, appsStep, duplicatesStep, developerStep};
}

void FullCheck::run()
{
    const ScanControl control = m_run.begin([this](const ScanProgress &progress) {
        if (progress.what.isEmpty())
            return;
        m_lookingAt = progress.what;
        Q_EMIT lookingAtChanged();
    });
    m_result = {};
    m_found.clear();
    m_gone = m_removals.items();
    m_removedSince.clear();
    m_trashReading.end();
    m_completedSteps.clear();
    m_lookingAt.clear();
    m_selectedRemovalIDs.clear();
    m_dismissedLoginItemIDs.clear();
    m_state.setScanning(true);
    Q_EMIT changed();
    check(control);
}

void FullCheck::cancel()
{
    if (!m_run.isUnderWay())
        return;
    m_run.end();
    m_state.setScanning(false);
    Q_EMIT changed();
}

/// What an engine offers, or why nothing is searched.
struct FullCheck::Found {
    std::vector<RemovableItem> items;
    QString problem;
};

QFuture<FullCheck::Found> FullCheck::begin(CleanupEngine engine, const ScanControl &control)
{
    return m_work.ask([=, machine = m_state.sharedMachine()] {
        const Search search = Search::on(*machine, control);
        return Found{find(engine, search), search.problem()};
    });
}

// Every wait may see this check left or begun anew, or this object gone: then nothing more is done.
QCoro::Task<> FullCheck::check(ScanControl control)
{
    const auto knownCaches = begin(CleanupEngine::knownCaches, control);
    const auto unknownCaches = begin(CleanupEngine::unknownCaches, control);
    const auto duplicates = begin(CleanupEngine::duplicates, control);
    const auto simulators = begin(CleanupEngine::simulatorRuntimes, control);
    const auto buildCache = begin(CleanupEngine::buildCache, control);
    const auto docker = begin(CleanupEngine::docker, control);
    SwabbyCheckResult result;
    std::vector<RemovableItem> &candidates = result.removalCandidates;
    // They may be thousands, and the thread that copies them draws as well.
    const auto add = [&](Found &&found) {
        std::ranges::move(found.items, std::back_inserter(candidates));
        if (result.problem.isEmpty())
            result.problem = found.problem;
    };
    // A check that left something out would call it clear.
    const auto isOver = [&] {
        if (control.stop.stopRequested() || result.problem.isEmpty())
            return control.stop.stopRequested();
        SwabbyCheckResult none;
        none.problem = result.problem;
        finish(std::move(none));
        return true;
    };

    add(co_await knownCaches);
    if (isOver())
        co_return;
    complete(storageStep);

    result.loginItemsToReview = swabby::loginItemsToReview(m_state.loginItems());
    complete(startupStep);

    const Settings settings(*m_state.machine().settings);
    result.processToWatch = swabby::processToWatch(m_state, settings.stored(setting<"processCpuRed">));
    complete(appsStep);

    add(co_await duplicates);
    if (isOver())
        co_return;
    complete(duplicatesStep);

    add(co_await simulators);
    add(co_await buildCache);
    add(co_await docker);
    if (isOver())
        co_return;
    complete(developerStep);

    const Found unvetted = co_await unknownCaches;
    result.problem = unvetted.problem;
    if (isOver())
        co_return;
    const ScanControl vetting = {.stop = control.stop, .progress = {}};
    const VettedCaches vetted = co_await vetCaches(m_ai, unvetted.items, vetting);
    if (control.stop.stopRequested())
        co_return;
    result.wasSent = vetted.wasSent;
    for (const SuggestedCache &suggestion : vetted.suggestions)
        if (suggestion.looksSafe)
            candidates.push_back(suggestion.item);

    // Made beforehand: GCC 12 destroys a temporary of a conditional expression twice inside an awaited call.
    std::optional<QString> watchedName;
    if (result.processToWatch)
        watchedName = result.processToWatch->name;
    const std::vector<RemovableItem> left = withoutGone(candidates, m_gone);
    const QString totalText = fileByteCount(totalBytes(left));
    const Asking asking = {control.stop, vetted.failure == ModelFailure::storeLocked ? Unlocking::never
                                                                                     : Unlocking::mayAsk};
    const auto summary = co_await m_ai.swabbyCheckSummary(
        static_cast<qint64>(left.size()), totalText, watchedName, result.loginItemsToReview.size(), asking);
    if (control.stop.stopRequested())
        co_return;
    result.headline = summary.value.headline;
    result.summary = summary.value.summary;
    result.wasSent = result.wasSent || summary.wasSent;
    result.host = summary.host;
    result.failure = summary.failure ? summary.failure : vetted.failure;

    finish(std::move(result));
}

void FullCheck::finish(SwabbyCheckResult result)
{
    m_result = std::move(result);
    m_found = std::move(m_result.removalCandidates);
    m_result.removalCandidates = withoutGone(m_found, m_gone);
    for (const RemovableItem &candidate : m_result.removalCandidates)
        if (!isBuildTools(candidate))
            m_selectedRemovalIDs.insert(candidate.id);
    m_run.end();
    if (m_result.problem.isEmpty())
        m_state.setLastScan(m_state.machine().clock->now());
    m_state.setScanning(false);
    Q_EMIT changed();
    Q_EMIT finished();
}

void FullCheck::complete(const QString &step)
{
    m_completedSteps.append(step);
    Q_EMIT stepCompleted(step);
    Q_EMIT changed();
}

void FullCheck::setSelected(const QString &removalID, bool isSelected)
{
    if (isSelected)
        m_selectedRemovalIDs.insert(removalID);
    else
        m_selectedRemovalIDs.erase(removalID);
    Q_EMIT changed();
}

void FullCheck::setAllSelected(bool isSelected)
{
    m_selectedRemovalIDs.clear();
    if (isSelected)
        for (const RemovableItem &candidate : m_result.removalCandidates)
            m_selectedRemovalIDs.insert(candidate.id);
    Q_EMIT changed();
}

void FullCheck::forget(const std::vector<RemovableItem> &removed)
{
    const std::vector<RemovableItem> &candidates = m_result.removalCandidates;
    for (const RemovableItem &item : removed)
        if (std::ranges::find(candidates, item.id, &RemovableItem::id) != candidates.end()) {
            m_removedSince.push_back(item);
            m_selectedRemovalIDs.erase(item.id);
        }
    m_removals.begin(removed);
    m_gone.insert(m_gone.end(), removed.begin(), removed.end());
    showWhatIsLeft();
}

void FullCheck::endRemoval(const std::vector<RemovableItem> &left)
{
    m_removals.end(left);
    takeBack(left);
}

void FullCheck::takeBack(const std::vector<RemovableItem> &there)
{
    if (there.empty())
        return;
    eraseEach(m_gone, there);
    eraseEach(m_removedSince, there);
    showWhatIsLeft();
}

// From what was found each time: what went may be one copy of several, or a piece of a folder, and come back.
void FullCheck::showWhatIsLeft()
{
    m_result.removalCandidates = withoutGone(m_found, m_gone);
    Q_EMIT changed();
}

void FullCheck::readTrashAgain()
{
    const auto isListed = [this] {
        return std::any_of(m_result.removalCandidates.begin(), m_result.removalCandidates.end(), isTrash);
    };
    if (!isListed())
        return;
    m_trashReading.begin();
    const auto reading = m_work.ask([machine = m_state.sharedMachine(), stop = m_trashReading.join()] {
        return findTrash(Search::on(*machine, {.stop = stop, .progress = {}}));
    });
    m_trashReading.whenDone(reading, [this, isListed](const std::optional<RemovableItem> &trash) {
        m_trashReading.end();
        if (isListed())
            replaceTrash(m_found, trash);
        showWhatIsLeft();
    });
}

void FullCheck::dismiss(const QString &loginItemID)
{
    m_dismissedLoginItemIDs.insert(loginItemID);
    Q_EMIT changed();
}

std::vector<RemovableItem> FullCheck::selectedItems() const
{
    std::vector<RemovableItem> items;
    for (const RemovableItem &candidate : m_result.removalCandidates)
        if (m_selectedRemovalIDs.contains(candidate.id))
            items.push_back(candidate);
    return items;
}

std::size_t FullCheck::selectedCount() const
{
    return static_cast<std::size_t>(
        std::ranges::count_if(m_result.removalCandidates, [this](const RemovableItem &candidate) {
            return m_selectedRemovalIDs.contains(candidate.id);
        }));
}

QString FullCheck::removeLabel() const
{
    const std::size_t selected = selectedCount();
    if (selected == m_result.removalCandidates.size())
        return QStringLiteral("Remove Everything");
    return QStringLiteral("Remove ") + QString::number(selected) + QStringLiteral(" Items");
}

} // namespace swabby
