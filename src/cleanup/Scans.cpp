#include "cleanup/Scans.h"

#include "cleanup/AppUninstaller.h"
#include "cleanup/CacheCleaner.h"
#include "cleanup/DeepScanner.h"
#include "cleanup/DeveloperCleanup.h"
#include "cleanup/DuplicateFinder.h"
#include "cleanup/SideBySide.h"
#include "engine/SaturatedBytes.h"
#include "settings/Settings.h"

#include <QtCore/QFile>

#include <algorithm>
#include <array>

namespace swabby {

ExcludeList excludeListFrom(SettingsStore &store)
{
    std::vector<std::filesystem::path> paths;
    for (const QString &path : Settings(store).value(setting<"neverRemove">))
        paths.emplace_back(QFile::encodeName(path).toStdString());
    return ExcludeList(paths);
}

std::vector<std::filesystem::path> duplicateFolders(const Machine &machine)
{
    std::vector<std::filesystem::path> folders;
    for (const std::filesystem::path &folder : {machine.cleanup.downloads, machine.cleanup.desktop})
        if (!folder.empty())
            folders.push_back(folder);
    return folders;
}

std::int64_t reclaimableStorage(const Machine &machine, const ScanControl &control)
{
    const ExcludeList excludes = excludeListFrom(*machine.settings);
    std::int64_t total = 0;
    for (const CacheEntry &entry : CacheCleaner::scan(machine, control, excludes))
        total = saturatedSum(total, entry.sizeBytes);
    for (const DuplicateGroup &group : DuplicateFinder::scan(duplicateFolders(machine), excludes, control))
        total = saturatedSum(total, group.wastedBytes());
    return total;
}

namespace {

using Items = std::vector<RemovableItem>;

/// One engine's offers, and how their ids begin.
struct Engine {
    const char *idPrefix;
    Items (*find)(const Machine &machine, const ScanControl &control, const ExcludeList &excludes);
};

Items cacheItems(const Machine &machine, const ScanControl &control, const ExcludeList &excludes)
{
    Items items;
    for (const CacheEntry &entry : CacheCleaner::scan(machine, control, excludes))
        items.push_back(RemovableItem::fromCache(entry));
    for (const CacheEntry &entry : CacheCleaner::scanUnknownCaches(machine, control, excludes))
        items.push_back(RemovableItem::fromCache(entry));
    return items;
}

Items duplicateItems(const Machine &machine, const ScanControl &control, const ExcludeList &excludes)
{
    Items items;
    for (const DuplicateGroup &group : DuplicateFinder::scan(duplicateFolders(machine), excludes, control))
        items.push_back(RemovableItem::fromDuplicate(group));
    return items;
}

Items simulatorItems(const Machine &machine, const ScanControl &control, const ExcludeList & /*excludes*/)
{
    Items items;
    for (const SimulatorRuntimeInfo &runtime : DeveloperCleanup::scanSimulatorRuntimes(machine, control))
        items.push_back(RemovableItem::fromSimulator(runtime));
    return items;
}

Items buildCacheItems(const Machine &machine, const ScanControl &control, const ExcludeList &excludes)
{
    const std::int64_t size = DeveloperCleanup::derivedDataSize(machine, control, excludes);
    return size > 0 ? Items{RemovableItem::derivedData(size)} : Items();
}

Items dockerItems(const Machine &machine, const ScanControl &control, const ExcludeList & /*excludes*/)
{
    const auto docker = DeveloperCleanup::dockerStatus(machine, control);
    if (docker.state != DeveloperCleanup::DockerState::available)
        return {};
    return {RemovableItem::dockerPrune(DeveloperCleanup::estimatedReclaimableBytes(docker.rows))};
}

Items deepScanItems(const Machine &machine, const ScanControl &control, const ExcludeList &excludes)
{
    Items items;
    for (const DeepScanItem &item : DeepScanner::scan(machine, control, excludes))
        items.push_back(RemovableItem::fromDeepScan(item));
    return items;
}

Items applicationItems(const Machine &machine, const ScanControl &control, const ExcludeList &excludes)
{
    Items items;
    for (const InstalledApp &app : AppUninstaller::scanInstalledApps(machine, control, excludes))
        items.push_back(RemovableItem::fromAppUninstall(
            app, AppUninstaller::scanLeftovers(machine, app, control, excludes)));
    return items;
}

constexpr std::array engines = {
    Engine{"cache:", cacheItems},        Engine{"dup:", duplicateItems},
    Engine{"sim:", simulatorItems},      Engine{"derived-data", buildCacheItems},
    Engine{"docker-prune", dockerItems}, Engine{"deep:", deepScanItems},
    Engine{"app:", applicationItems},
};

/// The offers of the wanted engines, which look side by side.
Items offersOf(const std::vector<Engine> &wanted, const Machine &machine, const ScanControl &control)
{
    const ExcludeList excludes = excludeListFrom(*machine.settings);
    std::vector<Items> offers(wanted.size());
    sideBySide(wanted.size(),
               [&](std::size_t number) { offers[number] = wanted[number].find(machine, control, excludes); });
    Items all;
    for (Items &items : offers)
        std::move(items.begin(), items.end(), std::back_inserter(all));
    return all;
}

} // namespace

std::vector<RemovableItem> allRemovableItems(const Machine &machine, const ScanControl &control)
{
    return offersOf({engines.begin(), engines.end()}, machine, control);
}

std::vector<RemovableItem> itemsNamed(const QStringList &ids, const Machine &machine,
                                      const ScanControl &control)
{
    std::vector<Engine> wanted;
    for (const Engine &engine : engines)
        if (std::any_of(ids.begin(), ids.end(),
                        [&](const QString &id) { return id.startsWith(QLatin1String(engine.idPrefix)); }))
            wanted.push_back(engine);
    return offersOf(wanted, machine, control);
}

} // namespace swabby
