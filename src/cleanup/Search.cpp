#include "cleanup/Search.h"

#include "cleanup/Engines.h"
#include "cleanup/RemovalRun.h"
#include "cleanup/SideBySide.h"
#include "engine/SaturatedBytes.h"
#include "settings/Settings.h"

#include <QtCore/QFile>

#include <algorithm>

namespace swabby {
namespace {

using Items = std::vector<RemovableItem>;

Items findSideBySide(const std::vector<CleanupEngineRow> &engines, const Search &search)
{
    if (!search.problem().isEmpty())
        return {};
    std::vector<Items> offers(engines.size());
    sideBySide(engines.size(), [&](std::size_t number) { offers[number] = engines[number].find(search); });
    Items all;
    for (Items &items : offers)
        std::move(items.begin(), items.end(), std::back_inserter(all));
    return all;
}

} // namespace

ExcludeList excludeListFrom(const Machine &machine)
{
    const auto [stored, problem] = Settings(*machine.settings).neverRemove(machine.places.home);
    if (!problem.isEmpty())
        return ExcludeList::everything(problem);
    std::vector<std::filesystem::path> paths;
    for (const QString &path : stored)
        paths.emplace_back(QFile::encodeName(path).toStdString());
    return ExcludeList(paths);
}

Search Search::on(const Machine &machine, const ScanControl &control)
{
    return {machine, control, excludeListFrom(machine)};
}

Items find(CleanupEngine engine, const Search &search)
{
    return search.problem().isEmpty() ? cleanupEngines()[static_cast<std::size_t>(engine)].find(search)
                                      : Items();
}

Items findEverything(const Search &search)
{
    return findSideBySide({cleanupEngines().begin(), cleanupEngines().end()}, search);
}

Items findNamed(const QStringList &ids, const Search &search)
{
    std::vector<CleanupEngineRow> wanted;
    for (const CleanupEngineRow &row : cleanupEngines())
        if (std::any_of(ids.begin(), ids.end(),
                        [&](const QString &id) { return id.startsWith(QLatin1String(row.idPrefix)); }))
            wanted.push_back(row);
    return findSideBySide(wanted, search);
}

std::optional<std::int64_t> reclaimableStorage(const Machine &machine, const ScanControl &control)
{
    const Search search = Search::on(machine, control);
    if (!search.problem().isEmpty())
        return std::nullopt;
    std::vector<RemovableItem> caches = find(CleanupEngine::knownCaches, search);
    // The build tools' stand on another page than the one that people are sent to.
    std::erase_if(caches,
                  [](const RemovableItem &item) { return std::get<CacheEntry>(item.kind).isBuildTool; });
    return saturatedSum(totalBytes(caches), totalBytes(find(CleanupEngine::duplicates, search)));
}

} // namespace swabby
