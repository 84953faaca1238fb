#pragma once

#include "platform/Disposal.h"
#include "platform/Permissions.h"
#include "platform/machinefolder/EventLog.h"
#include "platform/posix/TreeRemoval.h"

namespace swabby {

/// Removal inside a machine folder, with DIR/home/.Trash for a Trash, where a second item of the same name
/// is called "NAME 2.ENDING". Whatever path it is given, nothing that really lies outside the folder is
/// touched. Everything that happened has its line in the log, which has to outlive it.
class FolderDisposal final : public Disposal {
public:
    using Path = std::filesystem::path;

    /// What lies at or under trashRefuses cannot be moved to the Trash. What is refused is noted.
    FolderDisposal(Path folder, std::vector<Path> trashRefuses, const EventLog &events,
                   Permissions &permissions)
        : m_folder(std::move(folder)),
          m_trashRefuses(std::move(trashRefuses)),
          m_events(events),
          m_permissions(permissions)
    {
    }

    std::optional<TrashedItem> moveToTrash(const RemovalTarget &target,
                                           const BeforeMove &beforeMove) override;
    bool putBack(const TrashedItem &item) override;
    bool deleteOutright(const RemovalTarget &target) override;
    bool emptyFolder(const RemovalTarget &folder, const MustStay &mustStay) override;
    TrashListing listTrash(const Path &trash, const MustStay &mustStay) override;
    bool emptyTrash(const RemovalTarget &target, const TrashListing &listed,
                    const MustStay &mustStay) override;

private:
    Path trashPath() const { return m_folder / "home/.Trash"; }
    bool isInside(int folder) const;
    ChildGone deleted(const Path &folder) const;
    bool isRefused(const Path &path) const;

    Path m_folder;
    std::vector<Path> m_trashRefuses;
    const EventLog &m_events;
    Permissions &m_permissions;
};

} // namespace swabby
