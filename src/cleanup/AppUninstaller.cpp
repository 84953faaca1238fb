#include "cleanup/AppUninstaller.h"

#include "cleanup/DiskUsage.h"
#include "cleanup/MoreThanACache.h"
#include "cleanup/MoreThanAnApplication.h"
#include "platform/FolderListing.h"

#include <algorithm>
#include <functional>

namespace swabby::AppUninstaller {
namespace {

namespace fs = std::filesystem;

/// Fills in the sizes, measured side by side, and drops what occupies nothing.
template <typename Found>
void measure(const Search &search, std::vector<Found> &found)
{
    std::vector<fs::path> paths;
    std::ranges::transform(found, std::back_inserter(paths), &Found::path);
    const std::vector<std::int64_t> sizes = directorySizes(search, paths);
    for (std::size_t index = 0; index < found.size(); ++index)
        found[index].sizeBytes = sizes[index];
    std::erase_if(found, [](const Found &one) { return one.sizeBytes < 1; });
}

} // namespace

std::vector<InstalledApp> scanInstalledApps(const Search &search)
{
    std::vector<InstalledApp> apps;
    for (const FoundApplication &found : search.machine.applications->applications())
        if (const auto identity = FileIdentity::of(found.path);
            identity && !search.excludes.covers(found.path) &&
            !isMoreThanAnApplication(found.path, search.machine.cleanup.home))
            apps.push_back({.path = found.path,
                            .name = found.name,
                            .bundleID = found.bundleId,
                            .foundIn = found.foundIn,
                            .identity = *identity});
    measure(search, apps);
    std::ranges::stable_sort(apps, std::ranges::greater(), &InstalledApp::sizeBytes);
    return apps;
}

std::vector<AppLeftover> scanLeftovers(const Search &search, const InstalledApp &app)
{
    std::vector<AppLeftover> leftovers;
    for (const LeftoverPlace &place :
         search.machine.applications->leftoverPlaces({app.path, app.name, app.bundleID, app.foundIn})) {
        const fs::path path = place.folder / place.name;
        std::error_code problem;
        const auto identity = FileIdentity::of(path);
        // An application that lives in such a folder goes with it once, as itself.
        if (!identity || !fs::exists(path, problem) || search.excludes.covers(path) ||
            isMoreThanACache(search.machine.cleanup, path) || isAtOrUnder(path, app.path) ||
            isAtOrUnder(app.path, path) || isMoreThanAnApplication(path, search.machine.cleanup.home))
            continue;
        leftovers.push_back(
            {.path = path, .description = place.description, .foundIn = place.folder, .identity = *identity});
    }
    measure(search, leftovers);
    return leftovers;
}

bool isRunning(const Machine &machine, const QString &bundleID)
{
    return !bundleID.isEmpty() && std::ranges::count(machine.runningApplications->list(), bundleID,
                                                     &RunningApplication::bundleId) > 0;
}

} // namespace swabby::AppUninstaller
