#include "cleanup/RemovalRun.h"

#include "cleanup/AppUninstaller.h"
#include "cleanup/CacheCleaner.h"
#include "cleanup/DeepScanner.h"
#include "cleanup/DeveloperCleanup.h"
#include "cleanup/DuplicateFinder.h"
#include "cleanup/SaturatedBytes.h"
#include "cleanup/Scans.h"

#include <algorithm>

namespace swabby {
namespace {

/// One run: what there is to do it with, and what became of it so far.
class Run {
public:
    Run(const ExcludeList &excludes, Machine &machine, StopToken stop)
        : m_excludes(excludes), m_machine(machine), m_stop(std::move(stop))
    {
    }

    RemovalOutcome outcome() && { return std::move(m_outcome); }

    void remove(const std::vector<RemovableItem> &items)
    {
        clean(allOf<CacheEntry>(items));
        for (const DuplicateGroup &group : allOf<DuplicateGroup>(items))
            ifNotStopped([&] { return thin(group); });
        for (const SimulatorRuntimeInfo &runtime : allOf<SimulatorRuntimeInfo>(items))
            ifNotStopped([&] {
                DeveloperCleanup::deleteSimulatorRuntimes(m_machine, {runtime.identifier});
                return true;
            });
        once<DerivedData>(items, [&] { return DeveloperCleanup::clearDerivedData(m_machine, m_excludes); });
        once<DockerPrune>(items, [&] { return DeveloperCleanup::prune(m_machine); });
        for (const DeepScanItem &item : allOf<DeepScanItem>(items))
            ifNotStopped([&] { return note(DeepScanner::remove(m_machine, {item}, m_excludes)); });
        for (const AppUninstall &uninstall : allOf<AppUninstall>(items))
            ifNotStopped([&] { return remove(uninstall); });
    }

private:
    template <typename Kind> static std::vector<Kind> allOf(const std::vector<RemovableItem> &items)
    {
        std::vector<Kind> kinds;
        for (const RemovableItem &item : items)
            if (const auto *kind = std::get_if<Kind>(&item.kind))
                kinds.push_back(*kind);
        return kinds;
    }

    /// What is asked for several times is done once and counts for each.
    template <typename Kind, typename Action>
    void once(const std::vector<RemovableItem> &items, const Action &action)
    {
        const auto count = static_cast<qint64>(allOf<Kind>(items).size());
        if (count > 0 && (m_stop.stopRequested() || !action()))
            m_outcome.left += count;
    }

    /// The action says whether nothing of its item stayed.
    template <typename Action> void ifNotStopped(const Action &action)
    {
        if (m_stop.stopRequested() || !action())
            ++m_outcome.left;
    }

    void clean(const std::vector<CacheEntry> &entries)
    {
        if (entries.empty())
            return;
        if (m_stop.stopRequested()) {
            m_outcome.left += static_cast<qint64>(entries.size());
            return;
        }
        const std::vector<bool> gone = CacheCleaner::clean(m_machine, entries, m_excludes);
        m_outcome.left += std::count(gone.begin(), gone.end(), false);
    }

    bool thin(const DuplicateGroup &group)
    {
        DuplicateGroup mayGo = group;
        bool isWhole = true;
        // The list may have grown since the group was found.
        for (std::size_t copy = mayGo.paths.size(); copy-- > 1;) {
            if (!m_excludes.covers(mayGo.paths[copy]))
                continue;
            mayGo.paths.erase(mayGo.paths.begin() + static_cast<std::ptrdiff_t>(copy));
            if (copy < mayGo.identities.size())
                mayGo.identities.erase(mayGo.identities.begin() + static_cast<std::ptrdiff_t>(copy));
            isWhole = false;
        }
            DuplicateRemoval removal =
            DuplicateFinder::removeDuplicates({mayGo}, duplicateFolders(m_machine), *m_machine.disposal, m_stop);
        std::move(removal.trashed.begin(), removal.trashed.end(), std::back_inserter(m_outcome.trashed));
        return isWhole && removal.stayed == 0;
    }

    bool remove(const AppUninstall &uninstall)
    {
        auto result = AppUninstaller::uninstall(m_machine, uninstall.app, uninstall.leftovers, m_excludes);
        const bool isAppGone = note({std::move(result.app)});
        return note(std::move(result.leftovers)) && isAppGone;
    }

    /// Whether all of them went to the Trash.
    bool note(std::vector<std::optional<TrashedItem>> results)
    {
        bool isWhole = true;
        for (std::optional<TrashedItem> &result : results) {
            isWhole = isWhole && result.has_value();
            if (result)
                m_outcome.trashed.push_back(*std::move(result));
        }
        return isWhole;
    }

    const ExcludeList &m_excludes;
    Machine &m_machine;
    const StopToken m_stop;
    RemovalOutcome m_outcome;
};

} // namespace

RemovalOutcome removeItems(const std::vector<RemovableItem> &items, const ExcludeList &excludes, Machine &machine,
                           const StopToken &stop)
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
