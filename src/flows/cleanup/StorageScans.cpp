#include "flows/cleanup/StorageScans.h"

#include "cleanup/AppUninstaller.h"
#include "cleanup/CacheCleaner.h"
#include "cleanup/Overlaps.h"
#include "cleanup/Search.h"
#include "cleanup/TrashItem.h"
#include "engine/Samplers.h"

#include <QCoroFuture>

#include <algorithm>
#include <utility>

namespace swabby {
namespace {

using Items = std::vector<RemovableItem>;
using Findings = StorageScans::Findings;

constexpr std::int64_t oldAfterDays = 14;

/// Two of each kind: one that was ended may take a moment to be over.
constexpr int searchesAtOnce = 10;

/// What an engine offers, each once: two rules may find the same file.
Items foundOnce(CleanupEngine engine, const swabby::Search &search)
{
    Items items;
    for (RemovableItem &item : find(engine, search))
        if (std::none_of(items.begin(), items.end(), [&](const auto &known) { return known.id == item.id; }))
            items.push_back(std::move(item));
    return items;
}

Findings duplicates(const swabby::Search &search)
{
    return {.items = foundOnce(CleanupEngine::duplicates, search)};
}

Findings forgottenFiles(const swabby::Search &search)
{
    return {.items = foundOnce(CleanupEngine::deepScan, search)};
}

/// The processes of those that run.
std::map<QString, std::int32_t> runningAmong(const Items &items, const Machine &machine)
{
    std::map<QString, std::int32_t> running;
    const std::vector<RunningApplication> all = machine.runningApplications->list();
    for (const RemovableItem &item : items) {
        const auto *uninstall = std::get_if<AppUninstall>(&item.kind);
        if (uninstall == nullptr || uninstall->app.bundleID.isEmpty())
            continue;
        const auto found = std::ranges::find(all, uninstall->app.bundleID, &RunningApplication::bundleId);
        if (found != all.end())
            running.emplace(item.id, found->pid);
    }
    return running;
}

Findings applications(const swabby::Search &search)
{
    Findings found;
    for (const InstalledApp &app : AppUninstaller::scanInstalledApps(search))
        found.items.push_back(RemovableItem::of(AppUninstall{app, {}}));
    found.running = runningAmong(found.items, search.machine);
    return found;
}

Findings developerClutter(const swabby::Search &search)
{
    Findings found = {.items = oldRuntimes(DeveloperCleanup::scanSimulatorRuntimes(search))};
    for (RemovableItem &item : find(CleanupEngine::buildCache, search))
        found.items.push_back(std::move(item));
    for (const CacheEntry &cache : CacheCleaner::scanBuildTools(search))
        found.items.push_back(RemovableItem::of(cache));
    found.docker = DeveloperCleanup::dockerStatus(search);
    if (found.docker.state == DeveloperCleanup::DockerState::available)
        found.items.push_back(RemovableItem::of(DeveloperCleanup::clutterOf(found.docker)));
    return found;
}

/// Those that the developer panel does not list.
Findings knownCaches(const swabby::Search &search)
{
    Findings found = {.items = foundOnce(CleanupEngine::knownCaches, search)};
    std::erase_if(found.items,
                  [](const RemovableItem &item) { return std::get<CacheEntry>(item.kind).isBuildTool; });
    return found;
}

Findings unknownCaches(const swabby::Search &search)
{
    return {.items = foundOnce(CleanupEngine::unknownCaches, search)};
}

using Finder = Findings (*)(const swabby::Search &);

/// The searches in one step, in the order of the kinds.
constexpr std::array<Finder, 5> finders = {nullptr, duplicates, forgottenFiles, applications,
                                           developerClutter};

Findings searched(const Machine &machine, const ScanControl &control, Finder finder)
{
    const auto search = swabby::Search::on(machine, control);
    return search.problem().isEmpty() ? finder(search) : Findings{.problem = search.problem()};
}

/// What an application leaves behind, and whether it can be told.
struct Leftovers {
    bool isRunning = false;
    std::vector<AppLeftover> found = {};
    QString problem = {};
};

Leftovers leftoversOf(const InstalledApp &app, const Machine &machine, const StopToken &stop)
{
    if (AppUninstaller::isRunning(machine, app.bundleID))
        return {.isRunning = true};
    const auto search = swabby::Search::on(machine, {.stop = stop, .progress = {}});
    return {.found = AppUninstaller::scanLeftovers(search, app), .problem = search.problem()};
}

} // namespace

std::vector<RemovableItem> oldRuntimes(const std::vector<SimulatorRuntimeInfo> &runtimes)
{
    Items items;
    for (const SimulatorRuntimeInfo &runtime : runtimes)
        if (runtime.daysSinceUsed && *runtime.daysSinceUsed >= oldAfterDays)
            items.push_back(RemovableItem::of(runtime));
    return items;
}

std::vector<RemovableItem> StorageScans::Findings::offers() const
{
    Items offers = items;
    for (const SuggestedCache &suggestion : suggestions)
        if (suggestion.looksSafe)
            offers.push_back(suggestion.item);
    return offers;
}

std::vector<RemovableItem> StorageScans::Findings::unfamiliar() const
{
    Items unfamiliar;
    for (const SuggestedCache &suggestion : suggestions)
        if (!suggestion.looksSafe)
            unfamiliar.push_back(suggestion.item);
    return unfamiliar;
}

const SuggestedCache *StorageScans::Findings::suggestionOf(const QString &id) const
{
    const auto found =
        std::find_if(suggestions.begin(), suggestions.end(),
                     [&](const SuggestedCache &suggestion) { return suggestion.item.id == id; });
    return found == suggestions.end() ? nullptr : &*found;
}

bool StorageScans::Findings::isEmpty() const
{
    return items.empty() && suggestions.empty() && docker.state != DeveloperCleanup::DockerState::notRunning;
}

StorageScans::StorageScans(AppState &state, CloudAI &ai) : m_state(state), m_ai(ai), m_work(searchesAtOnce) {}

void StorageScans::begin(ClutterKind kind)
{
    Search &search = searchFor(kind);
    search.progress = {};
    search.gone = m_removals.items();
    const ScanControl control = search.run.begin([this, &search](const ScanProgress &progress) {
        search.progress = progress;
        Q_EMIT changed();
    });
    Q_EMIT changed();
    const auto finder = finders.at(static_cast<std::size_t>(kind));
    if (finder == nullptr) {
        quickClean(control);
        return;
    }
    const auto searching = m_work.ask(
        [machine = m_state.sharedMachine(), control, finder] { return searched(*machine, control, finder); });
    search.run.whenDone(searching, [this, kind](Findings found) { finish(kind, std::move(found)); });
}

void StorageScans::stop(ClutterKind kind)
{
    if (isScanning(kind))
        end(searchFor(kind));
}

void StorageScans::end(Search &search)
{
    search.run.end();
    search.gone.clear();
    Q_EMIT changed();
    if (!isScanning(ClutterKind::quickClean) && std::exchange(m_mustReadTrash, false))
        readTrashAgain();
}

void StorageScans::finish(ClutterKind kind, Findings findings)
{
    Search &search = searchFor(kind);
    search.findings = std::move(findings);
    search.isDone = true;
    takeOff(search.gone, search);
    end(search);
}

// Every wait may see this search over, and this object gone: then nothing more is done.
QCoro::Task<> StorageScans::quickClean(ScanControl control)
{
    const auto machine = m_state.sharedMachine();
    const auto ask = [&](Finder finder) {
        return m_work.ask([machine, control, finder] { return searched(*machine, control, finder); });
    };
    const auto scanning = ask(knownCaches);
    const Findings known = co_await scanning;
    if (control.stop.stopRequested())
        co_return;
    Search &search = searchFor(ClutterKind::quickClean);
    search.findings.items = known.items;
    search.findings.suggestions.clear();
    takeOff(search.gone, search);
    Q_EMIT changed();

    const auto looking = ask(unknownCaches);
    const Findings unknown = co_await looking;
    if (control.stop.stopRequested())
        co_return;
    if (!unknown.problem.isEmpty()) {
        finish(ClutterKind::quickClean, unknown);
        co_return;
    }
    const ScanControl vetting = {.stop = control.stop, .progress = [&](const ScanProgress &progress) {
                                     search.progress = progress;
                                     Q_EMIT changed();
                                 }};
    const VettedCaches vetted = co_await vetCaches(m_ai, unknown.items, vetting);
    if (control.stop.stopRequested())
        co_return;
    // As found: sizes that have shrunk by what is gone would shrink by it once more.
    finish(ClutterKind::quickClean, {.items = known.items,
                                     .suggestions = vetted.suggestions,
                                     .wasSent = vetted.wasSent,
                                     .host = vetted.host,
                                     .failure = vetted.failure});
}

void StorageScans::prepare(const QString &id)
{
    for (const RemovableItem &item : findings(ClutterKind::applications).items) {
        const auto *uninstall = std::get_if<AppUninstall>(&item.kind);
        if (item.id != id || uninstall == nullptr || !m_preparing.insert(id).second)
            continue;
        Q_EMIT changed();
        const auto looking =
            m_work.ask([machine = m_state.sharedMachine(), app = uninstall->app,
                        stop = m_preparations.join()] { return leftoversOf(app, *machine, stop); });
        m_preparations.whenDone(looking, [this, app = uninstall->app, id](const Leftovers &leftovers) {
            m_preparing.erase(id);
            if (!leftovers.problem.isEmpty()) {
                finish(ClutterKind::applications, {.problem = leftovers.problem});
                return;
            }
            Findings &found = searchFor(ClutterKind::applications).findings;
            if (leftovers.isRunning)
                lookWhoRuns();
            else
                found.running.erase(id);
            Q_EMIT changed();
            if (leftovers.isRunning)
                Q_EMIT stillRuns(app.name);
            else
                Q_EMIT prepared(RemovableItem::of(AppUninstall{app, leftovers.found}));
        });
        return;
    }
}

void StorageScans::lookWhoRuns()
{
    const Items &items = findings(ClutterKind::applications).items;
    if (items.empty())
        return;
    const auto looking =
        m_work.ask([machine = m_state.sharedMachine(), items] { return runningAmong(items, *machine); });
    m_looks.end(); // an older look may come in after a newer one
    m_looks.whenDone(looking, [this](const std::map<QString, std::int32_t> &running) {
        auto &known = searchFor(ClutterKind::applications).findings.running;
        if (std::exchange(known, running) != running)
            Q_EMIT changed();
    });
}

void StorageScans::findProcess(const QString &id)
{
    const Findings &found = findings(ClutterKind::applications);
    const auto running = found.running.find(id);
    if (running == found.running.end())
        return;
    const auto looking = m_work.ask([machine = m_state.sharedMachine(), pid = running->second] {
        return ProcessSampler::processes(*machine->processes->begin(), {pid}, machine->ownProcessId);
    });
    m_preparations.whenDone(looking, [this, pid = running->second](const auto &processes) {
        if (const auto process = processes.find(pid); process != processes.end())
            Q_EMIT runsAs(process->second);
        else
            lookWhoRuns();
    });
}

void StorageScans::forget(const Items &removed)
{
    m_removals.begin(removed);
    for (Search &search : m_searches) {
        if (search.run.isUnderWay())
            search.gone.insert(search.gone.end(), removed.begin(), removed.end());
        takeOff(removed, search);
    }
    Q_EMIT changed();
}

void StorageScans::takeOff(const Items &gone, Search &search)
{
    Findings &found = search.findings;
    const auto suggestionsBefore = found.suggestions.size();
    const Items left = withoutGone(found.items, gone);
    // What another removal touched stays so.
    search.isTouched = search.isTouched || left != found.items;
    found.items = left;
    std::vector<SuggestedCache> suggestions;
    for (SuggestedCache &suggestion : found.suggestions)
        for (RemovableItem &item : withoutGone({suggestion.item}, gone)) {
            suggestion.item = std::move(item);
            suggestions.push_back(suggestion);
        }
    found.suggestions = std::move(suggestions);
    search.isTouched = search.isTouched || found.suggestions.size() != suggestionsBefore;
}

void StorageScans::endRemoval(const Items &left)
{
    m_removals.end(left);
    if (!left.empty())
        lookAgain();
}

void StorageScans::readTrashAgain()
{
    m_mustReadTrash = isScanning(ClutterKind::quickClean);
    if (m_mustReadTrash || !isDone(ClutterKind::quickClean))
        return;
    m_trashReading.begin();
    const auto reading = m_work.ask([machine = m_state.sharedMachine(), stop = m_trashReading.join()] {
        return findTrash(swabby::Search::on(*machine, {.stop = stop, .progress = {}}));
    });
    m_trashReading.whenDone(reading, [this](const std::optional<RemovableItem> &trash) {
        m_trashReading.end();
        replaceTrash(searchFor(ClutterKind::quickClean).findings.items, trash);
        Q_EMIT changed();
    });
}

void StorageScans::lookAgain()
{
    for (std::size_t kind = 0; kind < m_searches.size(); ++kind) {
        Search &search = m_searches.at(kind);
        // One under way would not list what it takes for gone.
        const bool isStale = search.run.isUnderWay() && !search.gone.empty();
        if (std::exchange(search.isTouched, false) || isStale)
            begin(static_cast<ClutterKind>(kind));
    }
}

} // namespace swabby
