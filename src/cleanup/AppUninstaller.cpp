#include "cleanup/AppUninstaller.h"

#include "cleanup/DiskUsage.h"
#include "platform/FolderListing.h"

#include <algorithm>

namespace swabby::AppUninstaller {
namespace {

namespace fs = std::filesystem;

/// Fills in the sizes, measured side by side, and drops what occupies nothing.
template <typename Found>
void measure(Shell &shell, std::vector<Found> &found, const ScanControl &control)
{
    std::vector<fs::path> paths;
    std::transform(found.begin(), found.end(), std::back_inserter(paths),
                   [](const Found &one) { return one.path; });
    const std::vector<std::int64_t> sizes = directorySizes(shell, paths, control);
    for (std::size_t index = 0; index < found.size(); ++index)
        found[index].sizeBytes = sizes[index];
    std::erase_if(found, [](const Found &one) { return one.sizeBytes < 1; });
}

} // namespace

std::vector<InstalledApp> scanInstalledApps(const Machine &machine, const ScanControl &control,
                                            const ExcludeList &excludes)
{
    std::vector<InstalledApp> apps;
    for (const FoundApplication &found : machine.applications->applications())
        if (const auto identity = FileIdentity::of(found.path); identity && !excludes.covers(found.path))
            apps.push_back({.path = found.path,
                            .name = found.name,
                            .bundleID = found.bundleId,
                            .foundIn = found.foundIn,
                            .identity = *identity});
    measure(*machine.shell, apps, control);
    std::stable_sort(apps.begin(), apps.end(), [](const InstalledApp &left, const InstalledApp &right) {
        return left.sizeBytes > right.sizeBytes;
    });
    return apps;
}

std::vector<AppLeftover> scanLeftovers(const Machine &machine, const InstalledApp &app,
                                       const ScanControl &control, const ExcludeList &excludes)
{
    std::vector<AppLeftover> leftovers;
    for (const LeftoverPlace &place : machine.applications->leftoverPlaces(app.name, app.bundleID)) {
        const fs::path path = place.folder / place.name;
        std::error_code problem;
        const auto identity = FileIdentity::of(path);
        // An application that lives in such a folder goes with it once, as itself.
        if (!identity || !fs::exists(path, problem) || excludes.covers(path) || isAtOrUnder(path, app.path) ||
            isAtOrUnder(app.path, path))
            continue;
        leftovers.push_back(
            {.path = path, .description = place.description, .foundIn = place.folder, .identity = *identity});
    }
    measure(*machine.shell, leftovers, control);
    return leftovers;
}

bool isRunning(const Machine &machine, const QString &bundleID)
{
    const std::vector<RunningApplication> running = machine.runningApplications->list();
    return !bundleID.isEmpty() &&
           std::any_of(running.begin(), running.end(),
                       [&](const RunningApplication &one) { return one.bundleId == bundleID; });
}

Uninstalled uninstall(const Machine &machine, const InstalledApp &app,
                      const std::vector<AppLeftover> &leftovers, const ExcludeList &excludes)
{
    const auto toTrash = [&](const auto &one) -> std::optional<TrashedItem> {
        if (excludes.covers(one.path))
            return std::nullopt;
        return machine.disposal->moveToTrash({one.path, one.foundIn, one.identity});
    };
    Uninstalled result;
    result.app = toTrash(app);
    for (const AppLeftover &leftover : leftovers)
        result.leftovers.push_back(toTrash(leftover));
    return result;
}

} // namespace swabby::AppUninstaller
