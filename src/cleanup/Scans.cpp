#include "cleanup/Scans.h"

#include "app/settings/Settings.h"
#include "cleanup/AppUninstaller.h"
#include "cleanup/CacheCleaner.h"
#include "cleanup/DeepScanner.h"
#include "cleanup/DeveloperCleanup.h"
#include "cleanup/DuplicateFinder.h"
#include "cleanup/SaturatedBytes.h"

#include <QtCore/QFile>

namespace swabby {

ExcludeList excludeListFrom(SettingsStore &store)
{
    std::vector<std::filesystem::path> paths;
    for (const QString &path : Settings(store).neverRemove())
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

std::vector<RemovableItem> allRemovableItems(const Machine &machine, const ScanControl &control)
{
    const ExcludeList excludes = excludeListFrom(*machine.settings);
    std::vector<RemovableItem> items;
    for (const CacheEntry &entry : CacheCleaner::scan(machine, control, excludes))
        items.push_back(RemovableItem::fromCache(entry));
    for (const CacheEntry &entry : CacheCleaner::scanUnknownCaches(machine, control, excludes))
        items.push_back(RemovableItem::fromCache(entry));
    for (const DuplicateGroup &group : DuplicateFinder::scan(duplicateFolders(machine), excludes, control))
        items.push_back(RemovableItem::fromDuplicate(group));
    for (const SimulatorRuntimeInfo &runtime : DeveloperCleanup::scanSimulatorRuntimes(machine, control))
        items.push_back(RemovableItem::fromSimulator(runtime));
    if (const auto size = DeveloperCleanup::derivedDataSize(machine, control, excludes); size > 0)
        items.push_back(RemovableItem::derivedData(size));
    const auto docker = DeveloperCleanup::dockerStatus(machine, control);
    if (docker.state == DeveloperCleanup::DockerState::available)
        items.push_back(RemovableItem::dockerPrune(DeveloperCleanup::estimatedReclaimableBytes(docker.rows)));
    for (const DeepScanItem &item : DeepScanner::scan(machine, control, excludes))
        items.push_back(RemovableItem::fromDeepScan(item));
    for (const InstalledApp &app : AppUninstaller::scanInstalledApps(machine, control, excludes))
        items.push_back(RemovableItem::fromAppUninstall(
            app, AppUninstaller::scanLeftovers(machine, app, control, excludes)));
    return items;
}

} // namespace swabby
