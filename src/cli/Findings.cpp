#include "cleanup/AppUninstaller.h"
#include "cleanup/CacheCleaner.h"
#include "cleanup/DeepScanner.h"
#include "cleanup/DeveloperCleanup.h"
#include "cleanup/Engines.h"
#include "cli/Background.h"
#include "cli/CleanupJson.h"
#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/Verbs.h"
#include "engine/ByteCount.h"
#include "flows/ai/AssistantNotes.h"
#include "flows/cleanup/CacheVetting.h"

#include <QtCore/QFile>

#include <algorithm>

namespace swabby {
namespace {

/// What a scan found, both ways.
struct Findings {
    QJsonValue json;
    std::vector<QStringList> rows; ///< the size first
    QString nothing;
    int status = done;
    QString remark = {}; ///< below it, for people
};

void printFindings(const Arguments &arguments, const Findings &findings)
{
    if (arguments.json)
        print(jsonText(findings.json) + '\n');
    else
        print((findings.rows.empty() ? findings.nothing + QLatin1Char('\n') : table(findings.rows, {0})) +
              (findings.remark.isEmpty() ? QString() : findings.remark + QLatin1Char('\n')));
    QCoreApplication::exit(findings.status);
}

Findings cacheFindings(const std::vector<RemovableItem> &caches)
{
    QJsonArray json;
    Findings findings = {{}, {}, QStringLiteral("No cache worth clearing was found.")};
    for (const RemovableItem &cache : caches) {
        const auto &entry = std::get<CacheEntry>(cache.kind);
        json.append(toJson(entry));
        findings.rows.push_back(
            {fileByteCount(entry.sizeBytes), harmless(entry.description), pathText(entry.path)});
    }
    findings.json = json;
    return findings;
}

Findings vettedFindings(const std::vector<SuggestedCache> &suggestions)
{
    Findings findings = {arrayOf(suggestions), {}, QStringLiteral("No other large cache was found.")};
    for (const SuggestedCache &suggestion : suggestions)
        findings.rows.push_back(
            {fileByteCount(suggestion.item.sizeBytes), harmless(suggestion.item.title),
             suggestion.looksSafe ? QStringLiteral("looks safe") : QStringLiteral("not sure"),
             harmless(suggestion.reason)});
    return findings;
}

QCoro::Task<> vet(CloudAI &ai, std::vector<RemovableItem> caches, Arguments arguments)
{
    const VettedCaches vetted = co_await vetCaches(ai, std::move(caches), ScanControl());
    if (vetted.failure && !arguments.json)
        printProblem(AssistantNotes::reason(vetted.failure));
    printFindings(arguments, vettedFindings(vetted.suggestions));
}

Findings duplicateFindings(const Arguments &arguments, const Search &search)
{
    std::vector<std::filesystem::path> folders;
    for (const QString &folder : arguments.operands)
        folders.push_back(std::filesystem::absolute(QFile::encodeName(folder).toStdString()));
    if (folders.empty())
        folders = duplicateFolders(search.machine);
    const auto groups = duplicatesIn(folders, search);
    Findings findings = {arrayOf(groups), {}, QStringLiteral("No duplicates found.")};
    for (const DuplicateGroup &group : groups)
        for (const std::filesystem::path &path : group.paths) {
            const bool isKept = &path == &group.paths.front();
            findings.rows.push_back({isKept ? fileByteCount(group.wastedBytes()) : QString(),
                                     isKept ? QStringLiteral("keep") : QStringLiteral("copy"),
                                     pathText(path)});
        }
    return findings;
}

Findings deepFindings(const Arguments & /*arguments*/, const Search &search)
{
    const auto items = DeepScanner::scan(search);
    Findings findings = {arrayOf(items), {}, QStringLiteral("No large old files found.")};
    for (const DeepScanItem &item : items)
        findings.rows.push_back({fileByteCount(item.sizeBytes), labelOf(item.category),
                                 QStringLiteral("%1 days").arg(item.daysOld), pathText(item.path)});
    return findings;
}

Findings leftoverFindings(const QString &bundleID, const Search &search)
{
    const auto apps = AppUninstaller::scanInstalledApps(search);
    const auto app = std::find_if(apps.begin(), apps.end(),
                                  [&](const InstalledApp &known) { return known.bundleID == bundleID; });
    if (app == apps.end())
        return {QJsonArray(),
                {},
                QStringLiteral("No application \"%1\" is installed.").arg(harmless(bundleID)),
                notDone};
    const auto leftovers = AppUninstaller::scanLeftovers(search, *app);
    Findings findings = {arrayOf(leftovers), {}, QStringLiteral("It leaves nothing behind.")};
    for (const AppLeftover &leftover : leftovers)
        findings.rows.push_back(
            {fileByteCount(leftover.sizeBytes), leftover.description, pathText(leftover.path)});
    return findings;
}

Findings appFindings(const Arguments &arguments, const Search &search)
{
    if (!arguments.operands.isEmpty())
        return leftoverFindings(arguments.operands.first(), search);
    Findings findings = {{}, {}, QStringLiteral("No applications that could be removed.")};
    QJsonArray json;
    for (const InstalledApp &app : AppUninstaller::scanInstalledApps(search)) {
        const bool isRunning = AppUninstaller::isRunning(search.machine, app.bundleID);
        json.append(toJson(app, isRunning));
        findings.rows.push_back({fileByteCount(app.sizeBytes), harmless(app.name), harmless(app.bundleID),
                                 isRunning ? QStringLiteral("Running — quit it first") : QString()});
    }
    findings.json = json;
    findings.remark = search.machine.words.packagedPrograms;
    return findings;
}

Findings developerFindings(const Arguments & /*arguments*/, const Search &search)
{
    const auto runtimes = DeveloperCleanup::scanSimulatorRuntimes(search);
    const std::int64_t buildCache = DeveloperCleanup::derivedDataSize(search);
    const auto docker = DeveloperCleanup::dockerStatus(search);
    Findings findings = {QJsonObject{{QStringLiteral("simulatorRuntimes"), arrayOf(runtimes)},
                                     {QStringLiteral("derivedDataSize"), static_cast<qint64>(buildCache)},
                                     {QStringLiteral("docker"), toJson(docker)}},
                         {},
                         QStringLiteral("No developer clutter found.")};
    for (const CacheEntry &cache : CacheCleaner::scanBuildTools(search))
        findings.rows.push_back(
            {fileByteCount(cache.sizeBytes), harmless(cache.description), pathText(cache.path)});
    if (buildCache > 0)
        findings.rows.push_back({fileByteCount(buildCache), QStringLiteral("Xcode build cache")});
    for (const SimulatorRuntimeInfo &runtime : runtimes)
        findings.rows.push_back(
            {fileByteCount(runtime.sizeBytes), harmless(runtime.name), RemovableItem::of(runtime).subtitle});
    if (docker.state == DeveloperCleanup::DockerState::available)
        findings.rows.push_back({fileByteCount(DeveloperCleanup::estimatedReclaimableBytes(docker.rows)),
                                 QStringLiteral("Docker Reclaimable")});
    if (docker.state == DeveloperCleanup::DockerState::notRunning)
        findings.rows.push_back({QString(), QStringLiteral("Docker installed but not running.")});
    return findings;
}

Findings itemFindings(const Arguments & /*arguments*/, const Search &search)
{
    const auto items = findEverything(search);
    Findings findings = {arrayOf(items), {}, QStringLiteral("Nothing to clean up. Everything looks tidy.")};
    for (const RemovableItem &item : items)
        findings.rows.push_back(
            {fileByteCount(item.sizeBytes), item.category, harmless(item.title), harmless(item.id)});
    return findings;
}

using Find = Findings (*)(const Arguments &arguments, const Search &search);

int run(Find find, const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    return searchInBackground(
        *machine, [&](const Search &search) { return find(arguments, search); },
        [&](const Findings &findings) { printFindings(arguments, findings); });
}

} // namespace

int runCaches(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    CloudAI ai(machine, modelAddressesFromEnvironment());
    const CleanupEngine engine =
        arguments.unknown || arguments.vet ? CleanupEngine::unknownCaches : CleanupEngine::knownCaches;
    const auto searching = [&](const Search &search) { return find(engine, search); };
    return searchInBackground(*machine, searching, [&](const std::vector<RemovableItem> &caches) {
        if (arguments.vet)
            vet(ai, caches, arguments);
        else
            printFindings(arguments, cacheFindings(caches));
    });
}

int runDuplicates(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    return run(duplicateFindings, arguments, machine);
}

int runDeepScan(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    return run(deepFindings, arguments, machine);
}

int runApps(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    return run(appFindings, arguments, machine);
}

int runDeveloper(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    return run(developerFindings, arguments, machine);
}

int runItems(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    return run(itemFindings, arguments, machine);
}

} // namespace swabby
