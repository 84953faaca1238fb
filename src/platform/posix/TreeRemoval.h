#pragma once

#include "platform/posix/RemovalGuard.h"

namespace swabby {

/// Deletes what has that name in a held folder, a folder with everything in it. No link is followed and no
/// other mount entered, whatever is swapped meanwhile; the user's own read-only folders are opened up on the
/// way. Depth costs neither stack nor descriptors. Something other than expected stays. False when something
/// stayed; a folder in which something stayed remains.
bool removeEntry(int folder, const std::string &name,
                 const std::optional<FileIdentity> &expected = std::nullopt);

/// Told of every direct child that is wholly gone.
using ChildGone = std::function<void(const std::string &name)>;

/// Deletes every child of a held folder but those that must stay, which are asked for as children of
/// shownAs. False when something stayed.
bool removeChildren(int folder, const std::filesystem::path &shownAs, const MustStay &mustStay,
                    const ChildGone &gone = {});

/// The same for those children that were listed. One that is gone or has another thing in its place counts as
/// gone; one that has changed stays.
bool removeListed(int folder, const std::filesystem::path &shownAs, const std::vector<ListedEntry> &listed,
                  const MustStay &mustStay, const ChildGone &gone = {});

/// Takes the items that must stay, which are asked for as children of shownAs, out of a listing of the Trash.
void leaveOut(TrashListing &listing, const std::filesystem::path &shownAs, const MustStay &mustStay);

/// What remains of Disposal::deleteOutright and Disposal::emptyFolder once the guard is passed.
bool deleteGuarded(const HeldEntry &entry, const RemovalTarget &target);
bool emptyGuarded(const HeldEntry &entry, const RemovalTarget &target, const MustStay &mustStay,
                  const ChildGone &gone = {});

} // namespace swabby
