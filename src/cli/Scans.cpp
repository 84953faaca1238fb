#include "cleanup/Scans.h"

#include "ai/CloudAI.h"
#include "cleanup/AppUninstaller.h"
#include "cleanup/CacheCleaner.h"
#include "cleanup/DeepScanner.h"
#include "cleanup/DeveloperCleanup.h"
#include "cleanup/DuplicateFinder.h"
#include "cli/Background.h"
#include "cli/CleanupJson.h"
#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/Verbs.h"
#include "engine/ByteCount.h"

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
};

QString pathText(const std::filesystem::path &path)
{
    return harmless(textOf(path.native()));
}

void printFindings(const Arguments &arguments, const Findings &findings)
{
    if (arguments.json)
        print(jsonText(findings.json) + '\n');
    else
        print(findings.rows.empty() ? findings.nothing + QLatin1Char('\n') : table(findings.rows, {0}));
    QCoreApplication::exit(findings.status);
}

Findings cacheFindings(const std::vector<CacheEntry> &entries)
{
    Findings findings = {arrayOf(entries), {}, QStringLiteral("No cache worth clearing was found.")};
    for (const CacheEntry &entry : entries)
        findings.rows.push_back(
            {fileByteCount(entry.sizeBytes), harmless(entry.description), pathText(entry.path)});
    return findings;
}

Findings vettedFindings(const std::vector<SuggestedCache> &suggestions)
{
    Findings findings = {arrayOf(suggestions), {}, QStringLiteral("No other large cache was found.")};
    for (const SuggestedCache &suggestion : suggestions)
        findings.rows.push_back(
            {fileByteCount(suggestion.entry.sizeBytes), harmless(suggestion.entry.description),
             suggestion.looksSafe ? QStringLiteral("looks safe") : QStringLiteral("not sure"),
             harmless(suggestion.reason)});
    return findings;
}

QCoro::Task<> vet(CloudAI &ai, std::vector<CacheEntry> entries, Arguments arguments)
{
    std::vector<SuggestedCache> suggestions;
    for (const CacheEntry &entry : entries) {
        const auto verdict = co_await ai.assessCacheFolder(entry.description, fileByteCount(entry.sizeBytes));
        suggestions.push_back({entry, verdict.value.looksSafe, verdict.value.reason});
    }
    printFindings(arguments, vettedFindings(suggestions));
}

Findings duplicateFindings(const Arguments &arguments, const Machine &machine, const ScanControl &control)
{
    std::vector<std::filesystem::path> folders;
    for (const QString &folder : arguments.operands)
        folders.push_back(std::filesystem::absolute(QFile::encodeName(folder).toStdString()));
    if (folders.empty())
        folders = duplicateFolders(machine);
    const auto groups = DuplicateFinder::scan(folders, excludeListFrom(*machine.settings), control);
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

Findings deepFindings(const Machine &machine, const ScanControl &control)
{
    const auto items = DeepScanner::scan(machine, control, excludeListFrom(*machine.settings));
    Findings findings = {arrayOf(items), {}, QStringLiteral("No large old files found.")};
    for (const DeepScanItem &item : items)
        findings.rows.push_back({fileByteCount(item.sizeBytes), labelOf(item.category),
                                 QStringLiteral("%1 days").arg(item.daysOld), pathText(item.path)});
    return findings;
}

Findings leftoverFindings(const QString &bundleID, const Machine &machine, const ScanControl &control)
{
    const ExcludeList excludes = excludeListFrom(*machine.settings);
    const auto apps = AppUninstaller::scanInstalledApps(machine, control, excludes);
    const auto app = std::find_if(apps.begin(), apps.end(),
                                  [&](const InstalledApp &known) { return known.bundleID == bundleID; });
    if (app == apps.end())
        return {QJsonArray(),
                {},
                QStringLiteral("No application \"%1\" is installed.").arg(harmless(bundleID)),
                notDone};
    const auto leftovers = AppUninstaller::scanLeftovers(machine, *app, control, excludes);
    Findings findings = {arrayOf(leftovers), {}, QStringLiteral("It leaves nothing behind.")};
    for (const AppLeftover &leftover : leftovers)
        findings.rows.push_back(
            {fileByteCount(leftover.sizeBytes), leftover.description, pathText(leftover.path)});
    return findings;
}

Findings appFindings(const Arguments &arguments, const Machine &machine, const ScanControl &control)
{
    if (!arguments.operands.isEmpty())
        return leftoverFindings(arguments.operands.first(), machine, control);
    Findings findings = {{}, {}, QStringLiteral("No applications that could be removed.")};
    QJsonArray json;
    for (const InstalledApp &app :
         AppUninstaller::scanInstalledApps(machine, control, excludeListFrom(*machine.settings))) {
        const bool isRunning = AppUninstaller::isRunning(machine, app.bundleID);
        json.append(toJson(app, isRunning));
        findings.rows.push_back({fileByteCount(app.sizeBytes), harmless(app.name), harmless(app.bundleID),
                                 isRunning ? QStringLiteral("Running — quit it first") : QString()});
    }
    findings.json = json;
    return findings;
}

Findings developerFindings(const Machine &machine, const ScanControl &control)
{
    const auto runtimes = DeveloperCleanup::scanSimulatorRuntimes(machine, control);
    const std::int64_t buildCache =
        DeveloperCleanup::derivedDataSize(machine, control, excludeListFrom(*machine.settings));
    const auto docker = DeveloperCleanup::dockerStatus(machine, control);
    Findings findings = {QJsonObject{{QStringLiteral("simulatorRuntimes"), arrayOf(runtimes)},
                                     {QStringLiteral("derivedDataSize"), static_cast<qint64>(buildCache)},
                                     {QStringLiteral("docker"), toJson(docker)}},
                         {},
                         QStringLiteral("No developer clutter found.")};
    if (buildCache > 0)
        findings.rows.push_back({fileByteCount(buildCache), QStringLiteral("Xcode build cache")});
    for (const SimulatorRuntimeInfo &runtime : runtimes)
        findings.rows.push_back({fileByteCount(runtime.sizeBytes), harmless(runtime.name),
                                 RemovableItem::fromSimulator(runtime).subtitle});
    if (docker.state == DeveloperCleanup::DockerState::available)
        findings.rows.push_back({fileByteCount(DeveloperCleanup::estimatedReclaimableBytes(docker.rows)),
                                 QStringLiteral("Docker Reclaimable")});
    if (docker.state == DeveloperCleanup::DockerState::notRunning)
        findings.rows.push_back({QString(), QStringLiteral("Docker installed but not running.")});
    return findings;
}

Findings itemFindings(const Machine &machine, const ScanControl &control)
{
    const auto items = allRemovableItems(machine, control);
    Findings findings = {arrayOf(items), {}, QStringLiteral("Nothing to clean up. Everything looks tidy.")};
    for (const RemovableItem &item : items)
        findings.rows.push_back(
            {fileByteCount(item.sizeBytes), item.category, harmless(item.title), harmless(item.id)});
    return findings;
}

} // namespace

int runCaches(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    CloudAI ai(machine, modelAddressesFromEnvironment());
    const ScanControl control = terminalControl(*machine);
    const auto scan = [&] {
        const ExcludeList excludes = excludeListFrom(*machine->settings);
        return arguments.unknown || arguments.vet
                   ? CacheCleaner::scanUnknownCaches(*machine, control, excludes)
                   : CacheCleaner::scan(*machine, control, excludes);
    };
    return runInBackground(*machine, scan, [&](const std::vector<CacheEntry> &entries) {
        if (arguments.vet)
            vet(ai, entries, arguments);
        else
            printFindings(arguments, cacheFindings(entries));
    });
}

int runScan(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    const ScanControl control = terminalControl(*machine);
    const auto scan = [&] {
        if (arguments.verb == QLatin1String("duplicates"))
            return duplicateFindings(arguments, *machine, control);
        if (arguments.verb == QLatin1String("deep-scan"))
            return deepFindings(*machine, control);
        if (arguments.verb == QLatin1String("apps"))
            return appFindings(arguments, *machine, control);
        if (arguments.verb == QLatin1String("developer"))
            return developerFindings(*machine, control);
        return itemFindings(*machine, control);
    };
    return runInBackground(*machine, scan,
                           [&](const Findings &findings) { printFindings(arguments, findings); });
}

} // namespace swabby
