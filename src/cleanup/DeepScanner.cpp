#include "cleanup/DeepScanner.h"

#include "cleanup/DiskUsage.h"
#include "cleanup/SideBySide.h"
#include "engine/WholeNumber.h"
#include "platform/FolderListing.h"
#include "platform/TextScan.h"
#include "platform/Utf8.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <mutex>

namespace swabby::DeepScanner {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostProjectsOfARoot = 20;
constexpr std::int64_t oldProjectDays = 30;
constexpr std::int64_t oldDownloadDays = 90;
constexpr std::int64_t smallestImage = 20'000'001;
constexpr std::int64_t smallestFolder = 50'000'001;

std::int64_t daysSince(const FileIdentity &facts, double now)
{
    constexpr std::int64_t nanoseconds = 1'000'000'000;
    constexpr double secondsOfADay = 86'400;
    // The whole seconds apart: together they have more digits than a double.
    const std::int64_t seconds = facts.modifiedNanoseconds / nanoseconds;
    const auto rest = static_cast<double>(facts.modifiedNanoseconds % nanoseconds) / nanoseconds;
    return wholeNumber((now - static_cast<double>(seconds) - rest) / secondsOfADay);
}

/// The dependency folders of every root, those of the first root first.
std::vector<std::vector<fs::path>> searchRoots(Shell &shell, const std::vector<fs::path> &roots,
                                               const ScanControl &control)
{
    std::vector<std::vector<fs::path>> found(roots.size());
    std::mutex mutex;
    ScanProgress progress = {.what = {}, .total = static_cast<std::int64_t>(roots.size())};
    sideBySide(roots.size(), [&](std::size_t index) {
        const fs::path &root = roots[index];
        const auto text = shell.run(
            "/usr/bin/find",
            {root.native(), "-maxdepth", "5", "-type", "d", "-name", "node_modules", "-prune", "-print"},
            ToolOutput::fileNames, control.stop);
        if (text)
            found[index] = parseProjectSearch(*text, root);
        const std::scoped_lock guard(mutex);
        progress.what = textOf(root.filename().native());
        ++progress.done;
        control.report(progress);
    });
    return found;
}

/// Measures those that are folders; keeps what is large enough.
std::vector<DeepScanItem> measured(Shell &shell, const std::vector<DeepScanItem> &items,
                                   const ScanControl &control)
{
    std::vector<fs::path> folders;
    for (const DeepScanItem &item : items)
        if (item.identity.kind == FileKind::folder)
            folders.push_back(item.path);
    const std::vector<std::int64_t> sizes = directorySizes(shell, folders, control);

    std::vector<DeepScanItem> large;
    auto size = sizes.begin();
    for (DeepScanItem item : items) {
        if (item.identity.kind == FileKind::folder)
            item.sizeBytes = *size++;
        if (item.sizeBytes >= smallestFolder)
            large.push_back(std::move(item));
    }
    return large;
}

std::vector<DeepScanItem> oldProjects(const Machine &machine, const ScanControl &control,
                                      const ExcludeList &excludes)
{
    std::vector<fs::path> roots;
    for (const fs::path &root : machine.cleanup.projectRoots) {
        std::error_code problem;
        if (fs::exists(root, problem))
            roots.push_back(root);
    }
    const auto found = searchRoots(*machine.shell, roots, control);

    std::vector<DeepScanItem> items;
    for (std::size_t index = 0; index < roots.size(); ++index) {
        for (const fs::path &path : found[index]) {
            const fs::path project = path.parent_path();
            // The dependency folder's own time says when something was installed, not when somebody worked.
            const auto projectFacts = FileIdentity::of(project);
            const auto identity = FileIdentity::of(path);
            if (!projectFacts || !identity || excludes.covers(path))
                continue;
            const std::int64_t days = daysSince(*projectFacts, machine.clock->now());
            if (days >= oldProjectDays)
                items.push_back(
                    {.path = path,
                     .category = DeepScanCategory::nodeModules,
                     .description = textOf(project.filename().native()) + QStringLiteral("/node_modules"),
                     .daysOld = days,
                     .foundIn = roots[index],
                     .identity = *identity});
        }
    }
    return measured(*machine.shell, items, control);
}

/// What lies directly in a folder, as this category, whatever its size; a file with its length.
std::vector<DeepScanItem> itemsIn(const fs::path &folder, DeepScanCategory category, double now,
                                  const ExcludeList &excludes)
{
    std::vector<DeepScanItem> items;
    for (const fs::path &path : childrenOf(folder)) {
        const auto identity = FileIdentity::of(path);
        if (identity && !excludes.covers(path))
            items.push_back({.path = path,
                             .category = category,
                             .description = textOf(path.filename().native()),
                             .sizeBytes = identity->size,
                             .daysOld = daysSince(*identity, now),
                             .foundIn = folder,
                             .identity = *identity});
    }
    return items;
}

std::vector<DeepScanItem> installers(const Machine &machine, const ExcludeList &excludes)
{
    std::vector<fs::path> folders = {machine.cleanup.downloads};
    if (machine.cleanup.desktop != machine.cleanup.downloads)
        folders.push_back(machine.cleanup.desktop);
    const QStringList extensions = {QStringLiteral(".dmg"), QStringLiteral(".iso"), QStringLiteral(".pkg")};
    std::vector<DeepScanItem> images;
    for (const fs::path &folder : folders)
        for (DeepScanItem &item :
             itemsIn(folder, DeepScanCategory::diskImage, machine.clock->now(), excludes))
            if (item.sizeBytes >= smallestImage &&
                extensions.contains(textOf(item.path.extension().native()).toLower()))
                images.push_back(std::move(item));
    return images;
}

std::vector<DeepScanItem> oldDownloads(const Machine &machine, const ScanControl &control,
                                       const ExcludeList &excludes)
{
    std::vector<DeepScanItem> items =
        itemsIn(machine.cleanup.downloads, DeepScanCategory::oldDownload, machine.clock->now(), excludes);
    std::erase_if(items, [](const DeepScanItem &item) { return item.daysOld < oldDownloadDays; });
    return measured(*machine.shell, items, control);
}

} // namespace

std::vector<DeepScanItem> scan(const Machine &machine, const ScanControl &control,
                               const ExcludeList &excludes)
{
    std::vector<DeepScanItem> items = oldProjects(machine, control, excludes);
    for (auto &more : {installers(machine, excludes), oldDownloads(machine, control, excludes)})
        items.insert(items.end(), more.begin(), more.end());
    std::stable_sort(items.begin(), items.end(), [](const DeepScanItem &left, const DeepScanItem &right) {
        return left.sizeBytes > right.sizeBytes;
    });
    return items;
}

std::vector<std::optional<TrashedItem>> remove(const Machine &machine, const std::vector<DeepScanItem> &items,
                                               const ExcludeList &excludes)
{
    std::vector<std::optional<TrashedItem>> trashed;
    const auto toTrash = [&](const DeepScanItem &item) -> std::optional<TrashedItem> {
        if (excludes.covers(item.path))
            return std::nullopt;
        return machine.disposal->moveToTrash({item.path, item.foundIn, item.identity});
    };
    std::transform(items.begin(), items.end(), std::back_inserter(trashed), toTrash);
    return trashed;
}

std::vector<fs::path> parseProjectSearch(std::string_view text, const fs::path &root)
{
    std::vector<fs::path> found;
    const std::string start = root.native() + '/';
    forEachLine(text, [&](std::string_view line) {
        if (line.starts_with(start) && line.ends_with("/node_modules")) {
            const fs::path inside = line.substr(start.size());
            if (std::none_of(inside.begin(), inside.end(),
                             [](const fs::path &part) { return part == ".." || part == "."; }))
                found.emplace_back(line);
        }
        return found.size() < mostProjectsOfARoot;
    });
    return found;
}

} // namespace swabby::DeepScanner
