#include "cleanup/RemovalRun.h"

#include "cleanup/AppUninstaller.h"
#include "cleanup/CacheCleaner.h"
#include "cleanup/DeveloperCleanup.h"
#include "cleanup/DuplicateFinder.h"
#include "cleanup/Engines.h"
#include "cleanup/PutBackRecord.h"
#include "engine/SaturatedBytes.h"

#include <algorithm>
#include <set>
#include <type_traits>

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
        m_record.begin();
    }

    RemovalOutcome outcome() && { return std::move(m_outcome); }

    /// Kind by kind, in the order of the variant, the caches first and together. A kind that no overload
    /// below removes does not compile.
    template <typename... Kinds>
    void remove(const std::vector<RemovableItem> &items,
                std::type_identity<std::variant<CacheEntry, Kinds...>> /*kinds*/)
    {
        clean(items);
        (removeEach<Kinds>(items), ...);
    }

private:
    /// By its owner, or because the program ends and no tool runs any more.
    bool isStopped() const { return m_stop.stopRequested() || m_machine.stop.token().stopRequested(); }

    void noteLeft(const RemovableItem &item) { m_outcome.left.push_back(item); }

    template <typename Kind>
    void removeEach(const std::vector<RemovableItem> &items)
    {
        for (const RemovableItem &item : items)
            if (const auto *found = std::get_if<Kind>(&item.kind);
                found != nullptr && (isStopped() || !remove(*found)))
                noteLeft(item);
    }

    void clean(const std::vector<RemovableItem> &items)
    {
        std::vector<const RemovableItem *> caches;
        std::vector<CacheEntry> entries;
        for (const RemovableItem &item : items)
            if (const auto *entry = std::get_if<CacheEntry>(&item.kind)) {
                caches.push_back(&item);
                entries.push_back(*entry);
            }
        const std::vector<bool> gone = entries.empty() || isStopped()
                                           ? std::vector<bool>(entries.size())
                                           : CacheCleaner::clean(m_machine, entries, m_excludes, m_stop);
        for (std::size_t index = 0; index < entries.size(); ++index)
            if (!gone[index] && (isStopped() || FileIdentity::of(entries[index].path)))
                noteLeft(*caches[index]);
    }

    // Each says whether nothing of it stayed. What is asked for several times is done once and counts for
    // each.

    bool remove(const SimulatorRuntimeInfo &runtime)
    {
        DeveloperCleanup::deleteSimulatorRuntimes(m_machine, {runtime.identifier});
        return true;
    }

    bool remove(const DerivedData & /*buildCache*/)
    {
        if (!m_isBuildCacheClear)
            m_isBuildCacheClear = DeveloperCleanup::clearDerivedData(m_machine, m_excludes);
        return *m_isBuildCacheClear;
    }

    bool remove(const DockerPrune &docker)
    {
        if (!m_isDockerPruned)
            m_isDockerPruned = DeveloperCleanup::prune(m_machine, docker.engine);
        return *m_isDockerPruned;
    }

    bool remove(const DeepScanItem &item) { return moveToTrash(item); }

    bool remove(const AppUninstall &uninstall)
    {
        // It may have been started since it was agreed to.
        if (AppUninstaller::isRunning(m_machine, uninstall.app.bundleID))
            return false;
        bool isWhole = moveToTrash(uninstall.app);
        for (const AppLeftover &leftover : uninstall.leftovers)
            isWhole = moveToTrash(leftover) && isWhole;
        return isWhole;
    }

    /// One copy after the other, each held against the list of what has to stay.
    bool remove(const DuplicateGroup &group)
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
                {pair}, duplicateFolders(m_machine), *m_machine.disposal, m_stop, beforeMove());
            for (const TrashedItem &item : removal.trashed)
                note(item);
            isWhole = isWhole && removal.stayed == 0;
        }
        return isWhole && group.paths.size() == group.identities.size();
    }

    /// Whether nothing is at its path any more: it goes to the Trash now, or something else took it before.
    template <typename Found>
    bool moveToTrash(const Found &found)
    {
        if (!m_excludes.covers(found.path))
            if (const auto trashed = m_machine.disposal->moveToTrash(
                    {found.path, found.foundIn, agreedOn(found)}, beforeMove())) {
                note(*trashed);
                return true;
            }
        return !FileIdentity::of(found.path);
    }

    /// What was found there; of a folder out of which this run itself took something, as that left it.
    template <typename Found>
    FileIdentity agreedOn(const Found &found) const
    {
        const auto now = m_changedFolders.contains(found.path) ? FileIdentity::of(found.path) : std::nullopt;
        return now && now->isSameThing(found.identity) ? *now : found.identity;
    }

    /// Nothing goes to the Trash unless it is on record where it was.
    BeforeMove beforeMove()
    {
        return [this](const TrashedItem &item) {
            const bool isRecorded = m_record.add(item);
            m_outcome.isRecordable = m_outcome.isRecordable && isRecorded;
            return isRecorded;
        };
    }

    void note(const TrashedItem &item)
    {
        m_outcome.trashed.push_back(item);
        m_changedFolders.insert(item.from.parent_path());
    }

    const ExcludeList &m_excludes;
    Machine &m_machine;
    const StopToken m_stop;
    PutBackRecord m_record;
    std::set<std::filesystem::path> m_changedFolders; ///< by this run
    std::optional<bool> m_isBuildCacheClear;
    std::optional<bool> m_isDockerPruned;
    RemovalOutcome m_outcome;
};

} // namespace

RemovalOutcome removeItems(const std::vector<RemovableItem> &items, const ExcludeList &excludes,
                           Machine &machine, const StopToken &stop)
{
    if (!excludes.problem().isEmpty())
        return {.trashed = {}, .left = items, .problem = excludes.problem()};
    Run run(excludes, machine, stop);
    run.remove(items, std::type_identity<RemovableItemKind>());
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
