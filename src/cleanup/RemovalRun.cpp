#include "cleanup/RemovalRun.h"

#include "cleanup/AppUninstaller.h"
#include "cleanup/CacheCleaner.h"
#include "cleanup/DeepScanner.h"
#include "cleanup/DeveloperCleanup.h"
#include "cleanup/DuplicateFinder.h"
#include "cleanup/PutBackRecord.h"
#include "cleanup/Scans.h"
#include "engine/SaturatedBytes.h"

#include <algorithm>

namespace swabby {
namespace {

/// One run: what there is to do it with, and what became of it so far.
class Run {
public:
    Run(const ExcludeList &excludes, Machine &machine, StopToken stop)
        : m_excludes(excludes),
          m_machine(machine),
          m_stop(std::move(stop)),
          m_record(machine.places.applicationData)
    {
        m_record.forget();
    }

    RemovalOutcome outcome() &&
    {
        // A full disk takes no note of what went first, and has room by now.
        if (!m_isRecorded)
            m_record.store(m_outcome.trashed);
        return std::move(m_outcome);
    }

    void remove(const std::vector<RemovableItem> &items)
    {
        clean(allOf<CacheEntry>(items));
        each<DuplicateGroup>(items, [&](const DuplicateGroup &group) { return thin(group); });
        each<SimulatorRuntimeInfo>(items, [&](const SimulatorRuntimeInfo &runtime) {
            DeveloperCleanup::deleteSimulatorRuntimes(m_machine, {runtime.identifier});
            return true;
        });
        once<DerivedData>(items, [&] { return DeveloperCleanup::clearDerivedData(m_machine, m_excludes); });
        once<DockerPrune>(items, [&] { return DeveloperCleanup::prune(m_machine); });
        each<DeepScanItem>(items, [&](const DeepScanItem &item) {
            return isGone(item.path, DeepScanner::remove(m_machine, {item}, m_excludes).front());
        });
        each<AppUninstall>(items, [&](const AppUninstall &uninstall) { return remove(uninstall); });
    }

private:
    template <typename Kind>
    static std::vector<const RemovableItem *> allOf(const std::vector<RemovableItem> &items)
    {
        std::vector<const RemovableItem *> kinds;
        for (const RemovableItem &item : items)
            if (std::holds_alternative<Kind>(item.kind))
                kinds.push_back(&item);
        return kinds;
    }

    /// By its owner, or because the program ends and no tool runs any more.
    bool isStopped() const { return m_stop.stopRequested() || m_machine.stop.token().stopRequested(); }

    void noteLeft(const RemovableItem &item) { m_outcome.left.push_back(item); }

    /// What is asked for several times is done once and counts for each.
    template <typename Kind, typename Action>
    void once(const std::vector<RemovableItem> &items, const Action &action)
    {
        const auto those = allOf<Kind>(items);
        if (!those.empty() && (isStopped() || !action()))
            for (const RemovableItem *item : those)
                noteLeft(*item);
    }

    /// The action says whether nothing of its item stayed.
    template <typename Kind, typename Action>
    void each(const std::vector<RemovableItem> &items, const Action &action)
    {
        for (const RemovableItem *item : allOf<Kind>(items))
            if (isStopped() || !action(std::get<Kind>(item->kind)))
                noteLeft(*item);
    }

    void clean(const std::vector<const RemovableItem *> &caches)
    {
        std::vector<CacheEntry> entries;
        entries.reserve(caches.size());
        for (const RemovableItem *cache : caches)
            entries.push_back(std::get<CacheEntry>(cache->kind));
        const std::vector<bool> gone = entries.empty() || isStopped()
                                           ? std::vector<bool>(entries.size())
                                           : CacheCleaner::clean(m_machine, entries, m_excludes, m_stop);
        for (std::size_t index = 0; index < caches.size(); ++index)
            if (!gone[index] && (isStopped() || FileIdentity::of(entries[index].path)))
                noteLeft(*caches[index]);
    }

    /// One copy after the other, so that each is on record before the next one goes.
    bool thin(const DuplicateGroup &group)
    {
        bool isWhole = true;
        for (std::size_t copy = 1; copy < std::min(group.paths.size(), group.identities.size()); ++copy) {
            // The list may have grown since the group was found.
            if (m_excludes.covers(group.paths[copy])) {
                isWhole = false;
                continue;
            }
            const DuplicateGroup pair = {.paths = {group.paths.front(), group.paths[copy]},
                                         .sizeBytes = group.sizeBytes,
                                         .identities = {group.identities.front(), group.identities[copy]}};
            const DuplicateRemoval removal = DuplicateFinder::removeDuplicates(
                {pair}, duplicateFolders(m_machine), *m_machine.disposal, m_stop);
            for (const TrashedItem &item : removal.trashed)
                record(item);
            isWhole = isWhole && removal.stayed == 0;
        }
        return isWhole && group.paths.size() == group.identities.size();
    }

    bool remove(const AppUninstall &uninstall)
    {
        const auto result =
            AppUninstaller::uninstall(m_machine, uninstall.app, uninstall.leftovers, m_excludes);
        bool isWhole = isGone(uninstall.app.path, result.app);
        for (std::size_t index = 0; index < uninstall.leftovers.size(); ++index)
            isWhole = isGone(uninstall.leftovers[index].path, result.leftovers[index]) && isWhole;
        return isWhole;
    }

    /// Whether nothing is at the path any more: it went to the Trash now, or something else took it before.
    bool isGone(const std::filesystem::path &path, const std::optional<TrashedItem> &trashed)
    {
        if (trashed)
            record(*trashed);
        return trashed || !FileIdentity::of(path);
    }

    void record(const TrashedItem &item)
    {
        m_isRecorded = m_record.add(item) && m_isRecorded;
        m_outcome.trashed.push_back(item);
    }

    const ExcludeList &m_excludes;
    Machine &m_machine;
    const StopToken m_stop;
    const PutBackRecord m_record;
    bool m_isRecorded = true;
    RemovalOutcome m_outcome;
};

} // namespace

RemovalOutcome removeItems(const std::vector<RemovableItem> &items, const ExcludeList &excludes,
                           Machine &machine, const StopToken &stop)
{
    Run run(excludes, machine, stop);
    run.remove(items);
    return std::move(run).outcome();
}

std::int64_t totalBytes(const std::vector<RemovableItem> &items)
{
    std::int64_t total = 0;
    for (const RemovableItem &item : items)
        total = saturatedSum(total, item.sizeBytes);
    return total;
}

} // namespace swabby
