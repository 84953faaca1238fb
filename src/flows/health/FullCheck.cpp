#include "flows/health/FullCheck.h"

#include "cleanup/CacheCleaner.h"
#include "cleanup/DeveloperCleanup.h"
#include "cleanup/DuplicateFinder.h"
#include "cleanup/RemovalRun.h"
#include "cleanup/Scans.h"
#include "engine/ByteCount.h"
#include "settings/Settings.h"

#include <QCoroFuture>

#include <QtCore/QPointer>

#include <algorithm>

namespace swabby {
namespace {

/// Two checks' worth of scans: those of one that was left may take a moment to end.
constexpr int scansAtOnce = 12;

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

/// The six scans under way.
struct FullCheck::Scans {
    QFuture<std::vector<CacheEntry>> knownCaches;
    QFuture<std::vector<CacheEntry>> unknownCaches;
    QFuture<std::vector<DuplicateGroup>> duplicates;
    QFuture<std::vector<SimulatorRuntimeInfo>> simulators;
    QFuture<std::int64_t> buildCache;
    QFuture<DeveloperCleanup::DockerStatus> docker;
};

FullCheck::FullCheck(AppState &state, CloudAI &ai) : m_state(state), m_ai(ai), m_work(scansAtOnce) {}

FullCheck::~FullCheck()
{
    if (m_stop)
        m_stop->requestStop();
    if (m_phase == Phase::scanning)
        m_state.setScanning(false);
}

QStringList FullCheck::steps()
{
    return {storageStep, startupStep, appsStep, duplicatesStep, developerStep};
}

void FullCheck::run()
{
    if (m_stop)
        m_stop->requestStop();
    m_stop = std::make_unique<StopSource>();
    m_phase = Phase::scanning;
    m_result = {};
    m_completedSteps.clear();
    m_lookingAt.clear();
    m_selectedRemovalIDs.clear();
    m_dismissedLoginItemIDs.clear();
    m_state.setScanning(true);
    Q_EMIT changed();
    check(++m_number, m_stop->token());
}

void FullCheck::cancel()
{
    if (m_phase == Phase::done)
        return;
    m_stop->requestStop();
    ++m_number;
    m_phase = Phase::done;
    m_state.setScanning(false);
    Q_EMIT changed();
}

void FullCheck::begin(Scans &scans, const StopToken &stop)
{
    const ScanControl control = {
        .stop = stop, .progress = [self = QPointer(this), number = m_number](const ScanProgress &progress) {
            QMetaObject::invokeMethod(self, [self, number, what = progress.what] {
                if (!self || number != self->m_number || what.isEmpty())
                    return;
                self->m_lookingAt = what;
                Q_EMIT self->changed();
            });
        }};
    const auto machine = m_state.sharedMachine();
    const auto excludes = [machine] { return excludeListFrom(*machine->settings); };
    scans.knownCaches = m_work.ask([=] { return CacheCleaner::scan(*machine, control, excludes()); });
    scans.unknownCaches =
        m_work.ask([=] { return CacheCleaner::scanUnknownCaches(*machine, control, excludes()); });
    scans.duplicates =
        m_work.ask([=] { return DuplicateFinder::scan(duplicateFolders(*machine), excludes(), control); });
    scans.simulators = m_work.ask([=] { return DeveloperCleanup::scanSimulatorRuntimes(*machine, control); });
    scans.buildCache =
        m_work.ask([=] { return DeveloperCleanup::derivedDataSize(*machine, control, excludes()); });
    scans.docker = m_work.ask([=] { return DeveloperCleanup::dockerStatus(*machine, control); });
}

// Every wait may see this check left or begun anew, or this object gone: then nothing more is done.
QCoro::Task<> FullCheck::check(int number, StopToken stop)
{
    const QPointer self(this);
    const auto isLeft = [self, number] { return !self || self->m_number != number; };
    Scans scans;
    begin(scans, stop);
    SwabbyCheckResult result;

    const auto knownCaches = co_await scans.knownCaches;
    if (isLeft())
        co_return;
    complete(storageStep);

    result.loginItemsToReview = swabby::loginItemsToReview(m_state.loginItems());
    complete(startupStep);

    const Settings settings(*m_state.machine().settings);
    result.processToWatch = swabby::processToWatch(m_state, settings.stored(setting<"processCpuRed">));
    complete(appsStep);

    const auto duplicates = co_await scans.duplicates;
    if (isLeft())
        co_return;
    complete(duplicatesStep);

    const auto simulators = co_await scans.simulators;
    const auto buildCache = co_await scans.buildCache;
    const auto docker = co_await scans.docker;
    if (isLeft())
        co_return;
    complete(developerStep);

    std::vector<RemovableItem> &candidates = result.removalCandidates;
    for (const CacheEntry &entry : knownCaches)
        candidates.push_back(RemovableItem::fromCache(entry));
    for (const DuplicateGroup &group : duplicates)
        candidates.push_back(RemovableItem::fromDuplicate(group));
    for (const SimulatorRuntimeInfo &runtime : simulators)
        candidates.push_back(RemovableItem::fromSimulator(runtime));
    if (buildCache > 0)
        candidates.push_back(RemovableItem::derivedData(buildCache));
    if (docker.state == DeveloperCleanup::DockerState::available)
        candidates.push_back(
            RemovableItem::dockerPrune(DeveloperCleanup::estimatedReclaimableBytes(docker.rows)));

    const auto unknownCaches = co_await scans.unknownCaches;
    for (const CacheEntry &entry : unknownCaches) {
        if (isLeft())
            co_return;
        const auto verdict =
            co_await m_ai.assessCacheFolder(entry.description, fileByteCount(entry.sizeBytes));
        result.wasSent = result.wasSent || verdict.wasSent;
        if (verdict.value.looksSafe)
            candidates.push_back(RemovableItem::fromCache(entry));
    }
    if (isLeft())
        co_return;

    // Made beforehand: GCC 12 destroys a temporary of a conditional expression twice inside an awaited call.
    std::optional<QString> watchedName;
    if (result.processToWatch)
        watchedName = result.processToWatch->name;
    const QString totalText = fileByteCount(totalBytes(candidates));
    const auto summary = co_await m_ai.swabbyCheckSummary(static_cast<qint64>(candidates.size()), totalText,
                                                          watchedName, result.loginItemsToReview.size());
    if (isLeft())
        co_return;
    result.headline = summary.value.headline;
    result.summary = summary.value.summary;
    result.wasSent = result.wasSent || summary.wasSent;

    m_result = std::move(result);
    for (const RemovableItem &candidate : m_result.removalCandidates)
        m_selectedRemovalIDs.insert(candidate.id);
    m_phase = Phase::done;
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

void FullCheck::forget(const std::vector<RemovableItem> &removed)
{
    for (const RemovableItem &item : removed) {
        std::erase_if(m_result.removalCandidates,
                      [&](const RemovableItem &candidate) { return candidate.id == item.id; });
        m_selectedRemovalIDs.erase(item.id);
    }
    Q_EMIT changed();
}

void FullCheck::takeBack(const std::vector<RemovableItem> &left)
{
    m_result.removalCandidates.insert(m_result.removalCandidates.end(), left.begin(), left.end());
    Q_EMIT changed();
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

QString FullCheck::removeLabel() const
{
    const std::size_t selected = selectedItems().size();
    if (selected == m_result.removalCandidates.size())
        return QStringLiteral("Remove Everything");
    return QStringLiteral("Remove ") + QString::number(selected) + QStringLiteral(" Items");
}

} // namespace swabby
