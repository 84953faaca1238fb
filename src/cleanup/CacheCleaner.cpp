#include "cleanup/CacheCleaner.h"

#include "cleanup/DiskUsage.h"
#include "cleanup/MoreThanACache.h"
#include "engine/SaturatedBytes.h"
#include "platform/FolderListing.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <functional>

namespace swabby::CacheCleaner {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t smallestKnownCache = 1'000'001;
constexpr std::int64_t smallestUnknownCache = 20'000'001;
constexpr std::size_t mostUnknownCaches = 8;

/// A place to look at, and what of it would go.
struct Candidate {
    CacheEntry entry;
    std::vector<fs::path> parts;
};

/// Those of at least that size, largest first; of equal ones the earlier one first.
std::vector<CacheEntry> measured(const Search &search, std::vector<Candidate> candidates,
                                 std::int64_t smallest)
{
    std::vector<fs::path> paths;
    for (const Candidate &candidate : candidates)
        paths.insert(paths.end(), candidate.parts.begin(), candidate.parts.end());
    const std::vector<std::int64_t> sizes = directorySizes(search, paths);

    std::vector<CacheEntry> entries;
    auto size = sizes.begin();
    for (Candidate &candidate : candidates) {
        for (std::size_t part = 0; part < candidate.parts.size(); ++part)
            candidate.entry.sizeBytes = saturatedSum(candidate.entry.sizeBytes, *size++);
        if (candidate.entry.sizeBytes >= smallest)
            entries.push_back(std::move(candidate.entry));
    }
    std::ranges::stable_sort(entries, std::ranges::greater(), &CacheEntry::sizeBytes);
    return entries;
}

bool isCalledTrash(const fs::path &path)
{
    return path.filename() == ".Trash";
}

MustStay mustStayFrom(const ExcludeList &excludes)
{
    if (excludes.isEmpty())
        return {};
    return [&excludes](const fs::path &path) { return excludes.covers(path); };
}

bool cleanOne(const Machine &machine, const CacheEntry &entry, const ExcludeList &excludes)
{
    const CleanupPlaces &places = machine.cleanup;
    const MustStay mustStay = mustStayFrom(excludes);
    if (entry.path == places.trash)
        return entry.trash &&
               machine.disposal->emptyTrash({entry.path, places.trash.parent_path(), entry.identity},
                                            *entry.trash, mustStay);
    const RemovalTarget target = {entry.path, entry.foundIn.empty() ? places.cachesRoot : entry.foundIn,
                                  entry.identity};
    if (isCalledTrash(entry.path))
        return machine.disposal->emptyFolder(target, mustStay);
    return !excludes.covers(entry.path) && !isMoreThanACache(places, entry.path) &&
           machine.disposal->deleteOutright(target);
}

/// The folders of caches of sandboxed applications.
std::vector<KnownCache> sandboxCaches(const CleanupPlaces &places)
{
    std::vector<fs::path> sandboxes =
        places.sandboxes.empty() ? std::vector<fs::path>() : childrenOf(places.sandboxes);
    std::ranges::sort(sandboxes);
    std::vector<KnownCache> caches;
    for (const fs::path &sandbox : sandboxes) {
        const auto identity = FileIdentity::of(sandbox);
        const fs::path cache = sandbox / "cache";
        // The folder of caches is one of them where Swabby was started in a sandbox.
        if (identity && identity->kind == FileKind::folder && !isAtOrUnder(places.cachesRoot, cache))
            caches.push_back(
                {.path = cache,
                 .description =
                     QStringLiteral("Flatpak app cache (%1)").arg(textOf(sandbox.filename().native())),
                 .foundIn = places.sandboxes});
    }
    return caches;
}

/// Whether its removal, which follows no link below what it lies in, would find it.
bool canBeReached(const KnownCache &known, const CleanupPlaces &places)
{
    const fs::path &folder = known.foundIn.empty() ? places.cachesRoot : known.foundIn;
    std::error_code problem;
    return !isUnder(known.path, folder) ||
           fs::canonical(known.path, problem) ==
               fs::canonical(folder, problem) / known.path.lexically_relative(folder);
}

std::vector<CacheEntry> scanPlaces(const Search &search, const std::vector<KnownCache> &places)
{
    std::vector<Candidate> candidates;
    for (const KnownCache &known : places) {
        std::error_code problem;
        const auto identity = FileIdentity::of(known.path);
        // A link may lead from one of them to another.
        if (std::ranges::any_of(candidates,
                                [&](const Candidate &other) { return other.entry.path == known.path; }))
            continue;
        if (!identity || !fs::exists(known.path, problem) || !canBeReached(known, search.machine.cleanup) ||
            isMoreThanACache(search.machine.cleanup, known.path))
            continue;
        std::vector<fs::path> parts = {known.path};
        if (search.excludes.covers(known.path))
            parts = known.path == search.machine.cleanup.trash
                        ? partsThatMayGo(search.machine.cleanup.trashItems, search.excludes)
                        : std::vector<fs::path>();
        if (parts.empty())
            continue;
        candidates.push_back({{.path = known.path,
                               .description = known.description,
                               .identity = *identity,
                               .foundIn = known.foundIn,
                               .isBuildTool = known.isBuildTool},
                              std::move(parts)});
        // Before it is measured: what comes meanwhile was not looked at.
        if (known.path == search.machine.cleanup.trash)
            candidates.back().entry.trash = std::make_shared<TrashListing>(
                search.machine.disposal->listTrash(known.path, mustStayFrom(search.excludes)));
    }
    return measured(search, std::move(candidates), smallestKnownCache);
}

template <typename Wanted>
std::vector<CacheEntry> scanPlacesThat(const Search &search, Wanted isWanted)
{
    std::vector<KnownCache> places;
    std::ranges::copy_if(search.machine.cleanup.knownCaches, std::back_inserter(places), isWanted);
    return scanPlaces(search, places);
}

} // namespace

std::vector<CacheEntry> scan(const Search &search)
{
    std::vector<KnownCache> places = search.machine.cleanup.knownCaches;
    for (KnownCache &cache : sandboxCaches(search.machine.cleanup))
        places.push_back(std::move(cache));
    return scanPlaces(search, places);
}

std::vector<CacheEntry> scanBuildTools(const Search &search)
{
    return scanPlacesThat(search, [](const KnownCache &known) { return known.isBuildTool; });
}

std::vector<CacheEntry> scanTrash(const Search &search)
{
    return scanPlacesThat(
        search, [&](const KnownCache &known) { return known.path == search.machine.cleanup.trash; });
}

std::vector<CacheEntry> scanUnknownCaches(const Search &search)
{
    const std::vector<KnownCache> &known = search.machine.cleanup.knownCaches;
    std::vector<Candidate> candidates;
    for (const fs::path &path : childrenOf(search.machine.cleanup.cachesRoot)) {
        std::error_code problem;
        const auto identity = FileIdentity::of(path);
        if (!identity || !fs::is_directory(path, problem) || search.excludes.covers(path) ||
            isMoreThanACache(search.machine.cleanup, path) ||
            std::any_of(known.begin(), known.end(), [&](const KnownCache &row) {
                return row.path == path ||
                       (isUnder(row.path, path) && !search.machine.cleanup.offersFoldersOfKnown);
            }))
            continue;
        candidates.push_back(
            {{.path = path, .description = textOf(path.filename().native()), .identity = *identity}, {path}});
    }
    std::vector<CacheEntry> entries = measured(search, std::move(candidates), smallestUnknownCache);
    entries.resize(std::min(entries.size(), mostUnknownCaches));
    return entries;
}

std::vector<bool> clean(const Machine &machine, const std::vector<CacheEntry> &entries,
                        const ExcludeList &excludes, const StopToken &stop)
{
    std::vector<bool> gone;
    std::transform(entries.begin(), entries.end(), std::back_inserter(gone), [&](const CacheEntry &entry) {
        return !stop.stopRequested() && cleanOne(machine, entry, excludes);
    });

    for (const PackageCleanup &cleanup : machine.cleanup.packageCleanups) {
        const auto chosen = std::ranges::find(entries, cleanup.cacheFolder, &CacheEntry::path);
        // What stayed is not what was shown.
        const bool isChosen =
            chosen != entries.end() && gone[static_cast<std::size_t>(chosen - entries.begin())];
        if ((isChosen || !cleanup.onlyWhenChosen) && !excludes.covers(cleanup.cacheFolder) &&
            !stop.stopRequested())
            machine.shell->run("/usr/bin/env", cleanup.words);
    }
    return gone;
}

} // namespace swabby::CacheCleaner
