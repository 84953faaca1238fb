#include "cleanup/Engines.h"

#include "cleanup/AppUninstaller.h"
#include "cleanup/CacheCleaner.h"
#include "cleanup/DeepScanner.h"
#include "cleanup/DeveloperCleanup.h"
#include "cleanup/DuplicateFinder.h"
#include "engine/SaturatedBytes.h"
#include "platform/Utf8.h"

#include <QtCore/QUuid>

#include <algorithm>

namespace swabby {
namespace {

/// What is said of a thing that was found.
struct Words {
    CleanupEngine engine;
    QString key; ///< the rest of its id
    QString title;
    QString subtitle;
    std::int64_t sizeBytes;
};

/// Bytes that are no text are written out, so that no two paths become one key.
QString keyOf(const std::filesystem::path &path)
{
    const std::string &bytes = path.native();
    if (isUtf8(bytes))
        return textOf(bytes);
    return QString::fromLatin1(QByteArray::fromStdString(bytes).toPercentEncoding("/ "));
}

Words wordsOf(const CacheEntry &entry)
{
    return {CleanupEngine::knownCaches, keyOf(entry.path), entry.description,
            QStringLiteral("Regenerates automatically"), entry.sizeBytes};
}

Words wordsOf(const DuplicateGroup &group)
{
    return {CleanupEngine::duplicates,
            group.paths.empty() ? QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper()
                                : keyOf(group.paths.front()),
            group.name() + QStringLiteral(" \u00D7") + QString::number(group.paths.size()),
            QStringLiteral("Keeps one copy, moves the rest to Trash"), group.wastedBytes()};
}

Words wordsOf(const SimulatorRuntimeInfo &runtime)
{
    return {CleanupEngine::simulatorRuntimes, runtime.identifier, runtime.name,
            runtime.daysSinceUsed ? QStringLiteral("Last used %1 days ago").arg(*runtime.daysSinceUsed)
                                  : QStringLiteral("Never used"),
            runtime.sizeBytes};
}

Words wordsOf(const DerivedData &buildCache)
{
    return {CleanupEngine::buildCache,
            {},
            QStringLiteral("Xcode build cache"),
            QStringLiteral("Rebuilds automatically next time you build"),
            buildCache.sizeBytes};
}

Words wordsOf(const DockerPrune &docker)
{
    return {CleanupEngine::docker,
            {},
            QStringLiteral("Docker cleanup"),
            QStringLiteral("Unused images, stopped containers, build cache"),
            docker.sizeBytes};
}

Words wordsOf(const DeepScanItem &item)
{
    return {CleanupEngine::deepScan, keyOf(item.path), item.description,
            QStringLiteral("%1 \u00B7 untouched for %2 days \u00B7 moved to Trash")
                .arg(labelOf(item.category), QString::number(item.daysOld)),
            item.sizeBytes};
}

Words wordsOf(const AppUninstall &uninstall)
{
    const std::size_t count = uninstall.leftovers.size();
    std::int64_t size = uninstall.app.sizeBytes;
    for (const AppLeftover &leftover : uninstall.leftovers)
        size = saturatedSum(size, leftover.sizeBytes);
    return {CleanupEngine::applications, uninstall.app.bundleID, uninstall.app.name,
            count == 0 ? QStringLiteral("Moves the app to Trash")
                       : QStringLiteral("Moves the app and %1 related file%2 to Trash")
                             .arg(QString::number(count), count == 1 ? QString() : QStringLiteral("s")),
            size};
}

using Effects = std::vector<RemovalEffect>;

QString toTheTrash()
{
    return QStringLiteral("to the Trash");
}

Effects effectsOf(const CacheEntry &entry)
{
    const bool isTrash = entry.path.filename() == ".Trash" || entry.path.filename() == "Trash";
    return {{entry.path,
             {},
             isTrash ? QStringLiteral("emptied") : QStringLiteral("deleted, comes back by itself")}};
}

Effects effectsOf(const DuplicateGroup &group)
{
    Effects effects;
    for (const std::filesystem::path &path : group.paths)
        effects.push_back({path, {}, effects.empty() ? QStringLiteral("stays") : toTheTrash()});
    return effects;
}

Effects effectsOf(const SimulatorRuntimeInfo &runtime)
{
    return {{{}, runtime.name, QStringLiteral("deleted")}};
}

Effects effectsOf(const DerivedData & /*buildCache*/)
{
    return {{{}, QStringLiteral("Everything in Xcode's build cache"), QStringLiteral("deleted")}};
}

Effects effectsOf(const DockerPrune & /*docker*/)
{
    return {{{},
             QStringLiteral("Unused images, stopped containers, build cache"),
             QStringLiteral("deleted by Docker")}};
}

Effects effectsOf(const DeepScanItem &item)
{
    return {{item.path, {}, toTheTrash()}};
}

Effects effectsOf(const AppUninstall &uninstall)
{
    Effects effects = {{uninstall.app.path, {}, toTheTrash()}};
    for (const AppLeftover &leftover : uninstall.leftovers)
        effects.push_back({leftover.path, {}, leftover.description + QStringLiteral(", ") + toTheTrash()});
    return effects;
}

std::vector<DuplicateGroup> duplicates(const Search &search)
{
    return duplicatesIn(duplicateFolders(search.machine), search);
}

std::vector<DerivedData> buildCache(const Search &search)
{
    const std::int64_t size = DeveloperCleanup::derivedDataSize(search);
    return size > 0 ? std::vector{DerivedData{size}} : std::vector<DerivedData>();
}

std::vector<DockerPrune> docker(const Search &search)
{
    const auto status = DeveloperCleanup::dockerStatus(search);
    if (status.state != DeveloperCleanup::DockerState::available)
        return {};
    return {DeveloperCleanup::clutterOf(status)};
}

std::vector<AppUninstall> applications(const Search &search)
{
    std::vector<AppUninstall> found;
    for (const InstalledApp &app : AppUninstaller::scanInstalledApps(search))
        found.push_back({app, AppUninstaller::scanLeftovers(search, app)});
    return found;
}

template <auto scan>
std::vector<RemovableItem> itemsOf(const Search &search)
{
    const auto found = scan(search);
    std::vector<RemovableItem> items;
    std::transform(found.begin(), found.end(), std::back_inserter(items), RemovableItem::of);
    return items;
}

constexpr CleanupEngineRow rows[] = {
    {CleanupEngine::knownCaches, "cache:", "Quick Clean", "cache", itemsOf<CacheCleaner::scan>},
    {CleanupEngine::unknownCaches, "cache:", "Quick Clean", "cache",
     itemsOf<CacheCleaner::scanUnknownCaches>},
    {CleanupEngine::duplicates, "dup:", "Duplicate Finder", "duplicateGroup", itemsOf<duplicates>},
    {CleanupEngine::simulatorRuntimes, "sim:", "Developer Cleanup", "simulatorRuntime",
     itemsOf<DeveloperCleanup::scanSimulatorRuntimes>},
    {CleanupEngine::buildCache, "derived-data", "Developer Cleanup", "derivedData", itemsOf<buildCache>},
    {CleanupEngine::docker, "docker-prune", "Developer Cleanup", "dockerPrune", itemsOf<docker>},
    {CleanupEngine::deepScan, "deep:", "Deep Scan", "deepScanItem", itemsOf<DeepScanner::scan>},
    {CleanupEngine::applications, "app:", "App Uninstaller", "appUninstall", itemsOf<applications>},
};
static_assert(std::ranges::is_sorted(rows, {}, &CleanupEngineRow::engine));

const CleanupEngineRow &rowOf(CleanupEngine engine)
{
    return rows[static_cast<std::size_t>(engine)];
}

Words wordsOfAny(const RemovableItemKind &kind)
{
    return std::visit([](const auto &found) { return wordsOf(found); }, kind);
}

} // namespace

std::span<const CleanupEngineRow> cleanupEngines()
{
    return rows;
}

std::vector<std::filesystem::path> duplicateFolders(const Machine &machine)
{
    std::vector<std::filesystem::path> folders;
    for (const std::filesystem::path &folder : {machine.cleanup.downloads, machine.cleanup.desktop})
        if (!folder.empty())
            folders.push_back(folder);
    return folders;
}

std::vector<DuplicateGroup> duplicatesIn(const std::vector<std::filesystem::path> &folders,
                                         const Search &search)
{
    const bool isDescribed = !search.machine.cleanup.root.empty();
    return DuplicateFinder::scan(folders, search.excludes, search.control,
                                 isDescribed ? FirstBy::modification : FirstBy::birth);
}

RemovableItem RemovableItem::of(const RemovableItemKind &found)
{
    const Words words = wordsOfAny(found);
    const CleanupEngineRow &row = rowOf(words.engine);
    return {.id = QLatin1String(row.idPrefix) + words.key,
            .category = QLatin1String(row.category),
            .title = words.title,
            .subtitle = words.subtitle,
            .sizeBytes = words.sizeBytes,
            .kind = found};
}

QString caseName(const RemovableItemKind &kind)
{
    return QLatin1String(rowOf(wordsOfAny(kind).engine).caseName);
}

std::vector<RemovalEffect> removalEffects(const RemovableItemKind &kind)
{
    return std::visit([](const auto &found) { return effectsOf(found); }, kind);
}

} // namespace swabby
