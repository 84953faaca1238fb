#pragma once

#include "platform/Disposal.h"
#include "platform/Permissions.h"

namespace swabby {

/// Moves what lies at a path to the Trash in the system's own way and gives where it lies then; no value when
/// it stays. Blocks for as long as the disk does.
using ToTrash = std::function<std::optional<std::filesystem::path>(const std::filesystem::path &path)>;

/// Removal on a Mac. Its Trash takes paths, so what came to lie there is looked at: something that had been
/// put in the place of what was agreed on goes back at once.
class MacDisposal final : public Disposal {
public:
    /// The Trash is the one in the user's home folder; the system has others for other disks. What the system
    /// refuses is noted.
    MacDisposal(std::filesystem::path trash, ToTrash toTrash, Permissions &permissions)
        : m_trash(std::move(trash)), m_toTrash(std::move(toTrash)), m_permissions(permissions)
    {
    }

    /// Nobody knows the name that the system will give it: whoever is told before hears of the one it has,
    /// and of the one it came to have when that is another.
    std::optional<TrashedItem> moveToTrash(const RemovalTarget &target,
                                           const BeforeMove &beforeMove) override;
    bool putBack(const TrashedItem &item) override;
    bool deleteOutright(const RemovalTarget &target) override;
    bool emptyFolder(const RemovalTarget &folder, const MustStay &mustStay) override;
    TrashListing listTrash(const std::filesystem::path &trash, const MustStay &mustStay) override;
    bool emptyTrash(const RemovalTarget &target, const TrashListing &listed,
                    const MustStay &mustStay) override;

private:
    const std::filesystem::path m_trash;
    const ToTrash m_toTrash;
    Permissions &m_permissions;
};

} // namespace swabby
