#include "flows/cleanup/StorageScans.h"

#include "cleanup/AppUninstaller.h"
#include "cleanup/CacheCleaner.h"
#include "cleanup/DeepScanner.h"
#include "cleanup/DuplicateFinder.h"
#include "cleanup/Scans.h"
#include "engine/ByteCount.h"
#include "flows/cleanup/ProgressRelay.h"

#include <QCoroFuture>

#include <QtCore/QPointer>

#include <algorithm>

namespace swabby {
namespace {

using Items = std::vector<RemovableItem>;

/// Two of each kind: one that was ended may take a moment to be over.
constexpr int searchesAtOnce = 8;

template <typename Finding>
Items itemsFrom(const std::vector<Finding> &findings, RemovableItem (*make)(const Finding &))
{
    Items items;
    for (const Finding &finding : findings) {
        RemovableItem item = make(finding);
        // Two rules may find the same file.
        if (std::none_of(items.begin(), items.end(), [&](const auto &known) { return known.id == item.id; }))
            items.push_back(std::move(item));
    }
    return items;
}

Items duplicateItems(const Machine &machine, const ScanControl &control, const ExcludeList &excludes)
{
    return itemsFrom(DuplicateFinder::scan(duplicateFolders(machine), excludes, control),
                     &RemovableItem::fromDuplicate);
}

Items forgottenItems(const Machine &machine, const ScanControl &control, const ExcludeList &excludes)
{
    return itemsFrom(DeepScanner::scan(machine, control, excludes), &RemovableItem::fromDeepScan);
}

/// The applications and the ids of those that run.
struct Applications {
    Items items;
    std::set<QString> running;
};

Applications applications(const Machine &machine, const ScanControl &control)
{
    Applications found;
    for (const InstalledApp &app :
         AppUninstaller::scanInstalledApps(machine, control, excludeListFrom(*machine.settings))) {
        const RemovableItem item = RemovableItem::fromAppUninstall(app, {});
        if (AppUninstaller::isRunning(machine, app.bundleID))
            found.running.insert(item.id);
        found.items.push_back(item);
    }
    return found;
}

void takeOff(Items &items, const Items &removed)
{
    const auto isRemoved = [&](const RemovableItem &item) {
        return std::any_of(removed.begin(), removed.end(),
                           [&](const auto &gone) { return gone.id == item.id; });
    };
    items.erase(std::remove_if(items.begin(), items.end(), isRemoved), items.end());
}

} // namespace

StorageScans::StorageScans(AppState &state, CloudAI &ai) : m_state(state), m_ai(ai), m_work(searchesAtOnce) {}

StorageScans::~StorageScans()
{
    for (Run &run : m_runs)
        if (run.stop)
            run.stop->requestStop();
    m_ending.requestStop();
}

void StorageScans::begin(ClutterKind scan)
{
    Run &run = runOf(scan);
    if (run.stop)
        run.stop->requestStop();
    run.stop = std::make_unique<StopSource>();
    const int number = ++run.number;
    run.findings.isScanning = true;
    run.findings.progress = {};
    Q_EMIT changed();
    switch (scan) {
    case ClutterKind::quickClean:
        quickClean(number, control(scan, number));
        break;
    case ClutterKind::duplicates:
        search(scan, number, control(scan, number), duplicateItems);
        break;
    case ClutterKind::forgottenFiles:
        search(scan, number, control(scan, number), forgottenItems);
        break;
    case ClutterKind::applications:
        listApplications(number, control(scan, number));
        break;
    }
}

void StorageScans::stop(ClutterKind scan)
{
    Run &run = runOf(scan);
    if (!run.findings.isScanning)
        return;
    run.stop->requestStop();
    ++run.number;
    run.findings.isScanning = false;
    Q_EMIT changed();
}

ScanControl StorageScans::control(ClutterKind scan, int number)
{
    return {.stop = runOf(scan).stop->token(),
            .progress = relayProgress(this, [this, scan, number](const ScanProgress &progress) {
                Run &run = runOf(scan);
                if (number != run.number || !run.findings.isScanning)
                    return;
                run.findings.progress = progress;
                Q_EMIT changed();
            })};
}

void StorageScans::finish(ClutterKind scan, Items items)
{
    Findings &findings = runOf(scan).findings;
    findings.items = std::move(items);
    findings.isScanning = false;
    findings.isDone = true;
    Q_EMIT changed();
}

// Every wait may see this search ended or begun anew, or this object gone: then nothing more is done.
QCoro::Task<> StorageScans::search(ClutterKind scan, int number, ScanControl control, Search find)
{
    const QPointer self(this);
    const auto searching = m_work.ask([machine = m_state.sharedMachine(), control, find] {
        return find(*machine, control, excludeListFrom(*machine->settings));
    });
    Items items = co_await searching;
    if (self && runOf(scan).number == number)
        finish(scan, std::move(items));
}

QCoro::Task<> StorageScans::quickClean(int number, ScanControl control)
{
    const QPointer self(this);
    const auto isLeft = [self, number] {
        return !self || self->runOf(ClutterKind::quickClean).number != number;
    };
    const auto machine = m_state.sharedMachine();
    const auto scanning = m_work.ask([machine, control] {
        return CacheCleaner::scan(*machine, control, excludeListFrom(*machine->settings));
    });
    const auto known = co_await scanning;
    if (isLeft())
        co_return;
    Findings &findings = runOf(ClutterKind::quickClean).findings;
    findings.items = itemsFrom(known, &RemovableItem::fromCache);
    m_suggestions.clear();
    Q_EMIT changed();

    const auto looking = m_work.ask([machine, control] {
        return CacheCleaner::scanUnknownCaches(*machine, control, excludeListFrom(*machine->settings));
    });
    const auto unknown = co_await looking;
    std::vector<SuggestedCache> suggestions;
    bool wasSent = false;
    for (const CacheEntry &entry : unknown) {
        if (isLeft())
            co_return;
        findings.progress = {.what = entry.description,
                             .done = static_cast<std::int64_t>(suggestions.size()),
                             .total = static_cast<std::int64_t>(unknown.size())};
        Q_EMIT changed();
        const auto verdict =
            co_await m_ai.assessCacheFolder(entry.description, fileByteCount(entry.sizeBytes));
        wasSent = wasSent || verdict.wasSent;
        suggestions.push_back({entry, verdict.value.looksSafe, verdict.value.reason});
    }
    if (isLeft())
        co_return;
    m_suggestions = std::move(suggestions);
    m_wasSent = wasSent;
    finish(ClutterKind::quickClean, Items(findings.items));
}

QCoro::Task<> StorageScans::listApplications(int number, ScanControl control)
{
    const QPointer self(this);
    const auto listing =
        m_work.ask([machine = m_state.sharedMachine(), control] { return applications(*machine, control); });
    Applications found = co_await listing;
    if (!self || runOf(ClutterKind::applications).number != number)
        co_return;
    m_running = std::move(found.running);
    finish(ClutterKind::applications, std::move(found.items));
}

void StorageScans::prepare(const QString &id)
{
    for (const RemovableItem &item : findings(ClutterKind::applications).items) {
        const auto *uninstall = std::get_if<AppUninstall>(&item.kind);
        if (item.id != id || uninstall == nullptr || !m_preparing.insert(id).second)
            continue;
        Q_EMIT changed();
        findLeftovers(uninstall->app, id);
        return;
    }
}

QCoro::Task<> StorageScans::findLeftovers(InstalledApp app, QString id)
{
    const QPointer self(this);
    const auto looking = m_work.ask([machine = m_state.sharedMachine(), app,
                                     stop = m_ending.token()]() -> std::optional<std::vector<AppLeftover>> {
        if (AppUninstaller::isRunning(*machine, app.bundleID))
            return std::nullopt;
        return AppUninstaller::scanLeftovers(*machine, app, {.stop = stop, .progress = {}},
                                             excludeListFrom(*machine->settings));
    });
    const auto leftovers = co_await looking;
    if (!self)
        co_return;
    m_preparing.erase(id);
    if (leftovers)
        m_running.erase(id);
    else
        m_running.insert(id);
    Q_EMIT changed();
    if (leftovers)
        Q_EMIT prepared(RemovableItem::fromAppUninstall(app, *leftovers));
    else
        Q_EMIT stillRuns(app.name);
}

void StorageScans::forget(const Items &removed)
{
    m_touched.clear();
    for (const ClutterKind scan : {ClutterKind::quickClean, ClutterKind::duplicates,
                                   ClutterKind::forgottenFiles, ClutterKind::applications}) {
        std::vector<RemovableItem> &items = runOf(scan).findings.items;
        const std::size_t before = items.size();
        takeOff(items, removed);
        if (items.size() != before)
            m_touched.insert(scan);
    }
    const auto isRemoved = [&](const SuggestedCache &suggestion) {
        const QString id = RemovableItem::fromCache(suggestion.entry).id;
        return std::any_of(removed.begin(), removed.end(), [&](const auto &gone) { return gone.id == id; });
    };
    if (std::erase_if(m_suggestions, isRemoved) > 0)
        m_touched.insert(ClutterKind::quickClean);
    Q_EMIT changed();
}

void StorageScans::lookAgain()
{
    for (const ClutterKind scan : std::exchange(m_touched, {}))
        begin(scan);
}

} // namespace swabby
