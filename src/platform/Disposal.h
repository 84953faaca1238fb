#pragma once

#include "platform/FileIdentity.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace swabby {

/// Something that was shown to a person, who agreed that it goes.
struct RemovalTarget {
    std::filesystem::path path;
    /// What is removed as this kind lies under this folder, at any depth, and never is that folder itself.
    std::filesystem::path allowedFolder;
    /// What was found there; something else at the same path stays.
    FileIdentity identity;
};

/// Something in the Trash and where it was.
struct TrashedItem {
    std::filesystem::path from;
    std::filesystem::path trashed; ///< where it lies now
    FileIdentity identity;

    bool operator==(const TrashedItem &other) const { return from == other.from && trashed == other.trashed; }
};

/// Something that lay directly in a folder when that was listed.
struct ListedEntry {
    std::string name;
    FileIdentity identity;
};

/// What lay in the Trash when it was listed, as far as it may go.
struct TrashListing {
    std::vector<ListedEntry> items = {};   ///< what somebody threw away
    std::vector<ListedEntry> strays = {};  ///< records that tell of nothing any more
    std::vector<ListedEntry> remains = {}; ///< what other programs had begun to delete
    bool isWhole = true;                   ///< false when something in it has to stay
};

/// Told of something and its place in the Trash before it is moved there. False, and it stays where it is.
using BeforeMove = std::function<bool(const TrashedItem &)>;

/// Says of a path whether it has to stay whatever was agreed.
using MustStay = std::function<bool(const std::filesystem::path &)>;

/// The one way out for the user's files. Every call passes the same guard first: the path lies under the
/// allowed folder, is not that folder, and still leads to what was found; no link is followed on the way
/// down from the allowed folder, also not one that is swapped in meanwhile. What fails the guard stays.
/// Every call blocks for as long as the disk does: background work only. Safe from several threads.
class Disposal {
public:
    virtual ~Disposal() = default;

    /// Moves it to the user's Trash under a name that is free there. No value, and it stays where it is, when
    /// the guard or the system refuses or no Trash can be had, and when it is a folder that has changed since
    /// it was found. Whoever is told before hears of each name that is tried.
    virtual std::optional<TrashedItem> moveToTrash(const RemovalTarget &target,
                                                   const BeforeMove &beforeMove = {}) = 0;

    /// Moves it back where it was, with its Trash record, never over something that is there meanwhile;
    /// folders above it that are gone are made again. False when it stays in the Trash.
    virtual bool putBack(const TrashedItem &item) = 0;

    /// Deletes it for good: a folder with everything in it, of a link only the link. False when something of
    /// it stayed.
    virtual bool deleteOutright(const RemovalTarget &target) = 0;

    /// Deletes each direct child for good, except those that must stay, and keeps the folder. A folder that
    /// is a link is left alone. False when something stayed.
    virtual bool emptyFolder(const RemovalTarget &folder, const MustStay &mustStay) = 0;

    /// What lies in the user's Trash now, without what must stay.
    virtual TrashListing listTrash(const std::filesystem::path &trash, const MustStay &mustStay) = 0;

    /// Deletes what was listed of the user's Trash for good, with the records that tell of it; what came or
    /// changed since then stays. False when something that was listed stayed, or the listing is not whole.
    virtual bool emptyTrash(const RemovalTarget &trash, const TrashListing &listed,
                            const MustStay &mustStay) = 0;
};

} // namespace swabby
