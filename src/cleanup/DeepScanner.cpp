#include "cleanup/DeepScanner.h"

#include "cleanup/DiskUsage.h"
#include "cleanup/ProjectFolder.h"
#include "cleanup/SideBySide.h"
#include "cleanup/Untouched.h"
#include "platform/FolderListing.h"
#include "platform/TextScan.h"
#include "platform/Utf8.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <functional>
#include <mutex>

namespace swabby {

QString labelOf(DeepScanCategory category)
{
    switch (category) {
    case DeepScanCategory::nodeModules:
        return QStringLiteral("Old project (node_modules)");
    case DeepScanCategory::diskImage:
        return QStringLiteral("Old installer file");
    case DeepScanCategory::oldDownload:
        return QStringLiteral("Forgotten download");
    }
    return {};
}

namespace DeepScanner {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostProjectsOfARoot = 20;
constexpr std::int64_t oldProjectDays = 30;
constexpr std::int64_t oldDownloadDays = 90;
constexpr std::int64_t smallestImage = 20'000'001;
constexpr std::int64_t smallestFolder = 50'000'001;

/// The dependency folders of every root, those of the first root first.
std::vector<std::vector<fs::path>> searchRoots(const Search &search, const std::vector<fs::path> &roots)
{
    std::vector<std::vector<fs::path>> found(roots.size());
    std::mutex mutex;
    ScanProgress progress = {.what = {}, .total = static_cast<std::int64_t>(roots.size())};
    sideBySide(roots.size(), [&](std::size_t index) {
        const fs::path &root = roots[index];
        const auto text = search.machine.shell->run(
            "/usr/bin/find",
            {root.native(), "-maxdepth", "5", "-type", "d", "-name", "node_modules", "-prune", "-print"},
            ToolOutput::fileNames, search.control.stop);
        if (text)
            found[index] = parseProjectSearch(*text, root);
        const std::scoped_lock guard(mutex);
        progress.what = textOf(root.filename().native());
        ++progress.done;
        search.control.report(progress);
    });
    return found;
}

/// Measures those that are folders; keeps what is large enough.
std::vector<DeepScanItem> measured(const Search &search, const std::vector<DeepScanItem> &items)
{
    std::vector<fs::path> folders;
    for (const DeepScanItem &item : items)
        if (item.identity.kind == FileKind::folder)
            folders.push_back(item.path);
    const std::vector<std::int64_t> sizes = directorySizes(search, folders);

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

std::vector<DeepScanItem> oldProjects(const Search &search)
{
    std::vector<fs::path> roots;
    for (const fs::path &root : search.machine.cleanup.projectRoots) {
        std::error_code problem;
        if (fs::exists(root, problem))
            roots.push_back(root);
    }
    const auto found = searchRoots(search, roots);

    std::vector<DeepScanItem> items;
    for (std::size_t index = 0; index < roots.size(); ++index) {
        for (const fs::path &path : found[index]) {
            const fs::path project = path.parent_path();
            // The dependency folder's own time says when something was installed, not when somebody worked.
            const auto projectFacts = FileIdentity::of(project);
            const auto identity = FileIdentity::of(path);
            if (!projectFacts || !identity || search.excludes.covers(path))
                continue;
            const std::int64_t days =
                daysBetween(projectFacts->modifiedNanoseconds, search.machine.clock->now());
            if (days >= oldProjectDays && isProject(project, roots[index]))
                items.push_back(
                    {.path = path,
                     .category = DeepScanCategory::nodeModules,
                     .description = textOf(project.filename().native()) + QStringLiteral("/node_modules"),
                     .daysOld = days,
                     .foundIn = roots[index],
                     .identity = *identity});
        }
    }
    return measured(search, untouched(search, std::move(items), oldProjectDays));
}

/// What lies directly in a folder, as this category, whatever its size; a file with its length.
std::vector<DeepScanItem> itemsIn(const Search &search, const fs::path &folder, DeepScanCategory category)
{
    std::vector<DeepScanItem> items;
    for (const fs::path &path : childrenOf(folder)) {
        const auto identity = FileIdentity::of(path);
        if (identity && !search.excludes.covers(path))
            items.push_back(
                {.path = path,
                 .category = category,
                 .description = textOf(path.filename().native()),
                 .sizeBytes = identity->size,
                 .daysOld = daysBetween(identity->modifiedNanoseconds, search.machine.clock->now()),
                 .foundIn = folder,
                 .identity = *identity});
    }
    return items;
}

std::vector<DeepScanItem> installers(const Search &search)
{
    std::vector<fs::path> folders = {search.machine.cleanup.downloads};
    if (search.machine.cleanup.desktop != search.machine.cleanup.downloads)
        folders.push_back(search.machine.cleanup.desktop);
    const QStringList extensions = {QStringLiteral(".dmg"), QStringLiteral(".iso"), QStringLiteral(".pkg")};
    std::vector<DeepScanItem> images;
    for (const fs::path &folder : folders)
        for (DeepScanItem &item : itemsIn(search, folder, DeepScanCategory::diskImage))
            if (item.sizeBytes >= smallestImage &&
                extensions.contains(textOf(item.path.extension().native()).toLower()))
                images.push_back(std::move(item));
    return untouched(search, std::move(images), anyAge);
}

std::vector<DeepScanItem> oldDownloads(const Search &search)
{
    std::vector<DeepScanItem> items =
        itemsIn(search, search.machine.cleanup.downloads, DeepScanCategory::oldDownload);
    std::erase_if(items, [](const DeepScanItem &item) {
        return item.identity.kind == FileKind::file && item.sizeBytes < smallestFolder;
    });
    return measured(search, untouched(search, std::move(items), oldDownloadDays));
}

} // namespace

std::vector<DeepScanItem> scan(const Search &search)
{
    std::vector<DeepScanItem> items = oldProjects(search);
    for (auto &more : {installers(search), oldDownloads(search)})
        items.insert(items.end(), more.begin(), more.end());
    std::ranges::stable_sort(items, std::ranges::greater(), &DeepScanItem::sizeBytes);
    return items;
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

} // namespace DeepScanner
} // namespace swabby
