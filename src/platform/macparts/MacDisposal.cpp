#include "platform/macparts/MacDisposal.h"

#include "platform/posix/EntryMove.h"
#include "platform/posix/HeldFolder.h"
#include "platform/posix/PathWay.h"
#include "platform/posix/Spelling.h"
#include "platform/posix/TreeRemoval.h"

#include <fcntl.h>
#include <unistd.h>

namespace swabby {
namespace {

using Path = std::filesystem::path;

/// The Trash, what contains it and what it contains are not moved into it.
bool isOfTheTrash(const Path &trash, const HeldEntry &entry, const FileIdentity &identity)
{
    const Descriptor folder = holdFolder(trash);
    const auto own = identityOf(folder.number());
    return own && (liesAtOrUnder(entry.folder.number(), *own) ||
                   (identity.kind == FileKind::folder && liesAtOrUnder(folder.number(), identity)));
}

/// Whether this user could move it but for what macOS keeps to itself.
bool isWritable(const HeldEntry &entry)
{
    const int folder = entry.folder.number();
    return ::faccessat(folder, ".", W_OK, 0) == 0 && ::faccessat(folder, entry.name.c_str(), W_OK, 0) == 0;
}

/// Holds it, to ask later where it lies; not open when another name may be told then.
Descriptor holdOnlyName(const Path &path, const FileIdentity &identity)
{
    std::error_code problem;
    const bool hasOne =
        identity.kind == FileKind::folder || std::filesystem::hard_link_count(path, problem) == 1;
    Descriptor held = hasOne && identity.kind != FileKind::link ? holdEntry(path) : Descriptor();
    const auto own = identityOf(held.number());
    return own && own->isSameThing(identity) ? std::move(held) : Descriptor();
}

} // namespace

std::optional<TrashedItem> MacDisposal::moveToTrash(const RemovalTarget &target, const BeforeMove &beforeMove)
{
    const auto entry = passTrashGuard(target);
    // The way there without links: one that is swapped in on the target's own leads nowhere else.
    const Path folder = entry ? pathOf(entry->folder.number()) : Path();
    if (folder.empty() || isOfTheTrash(m_trash, *entry, target.identity))
        return std::nullopt;
    TrashedItem item = {target.path, m_trash / entry->name, target.identity};
    if (beforeMove && !beforeMove(item))
        return std::nullopt;
    const Descriptor held = holdOnlyName(folder / entry->name, target.identity);
    const Path told = std::exchange(item.trashed, m_toTrash(folder / entry->name).value_or(Path()));
    const bool isRemoved = !item.trashed.empty();
    if (isRemoved || isWritable(*entry))
        m_permissions.noteRemoval(target.path, isRemoved);
    if (!isRemoved)
        return std::nullopt;

    const Descriptor trash = holdFolder(item.trashed.parent_path());
    const EntryAt place = {trash.number(), item.trashed.filename().native()};
    const auto landed = identityIn(place.folder, place.name);
    // Who may not look into the Trash asks what was held where it lies, or has the system's word for it.
    if (!landed) {
        const Path now = toldPathOf(held.number());
        // The system's word may spell the same name otherwise.
        const bool isAnother = !now.empty() && folded(now.filename()) != folded(item.trashed.filename());
        return isAnother || identityIn(entry->folder.number(), entry->name) ? std::nullopt
                                                                            : std::optional(item);
    }
    const bool isIt = notedThing(place, target.identity).has_value();
    if (isIt && (item.trashed == told || !beforeMove || beforeMove(item)))
        return item;
    // Another thing may have been put in its place, or another folder in the place of the one it lay in.
    bool isBack = moveEntry(place, {entry->folder.number(), entry->name}, *landed) == MoveResult::moved;
    if (!isIt && !isBack)
        isBack = moveEntry(place, {holdFolder(folder).number(), entry->name}, *landed) == MoveResult::moved;
    return isIt && !isBack ? std::optional(item) : std::nullopt;
}

bool MacDisposal::putBack(const TrashedItem &item)
{
    const Descriptor trash = holdFolder(AT_FDCWD, item.trashed.parent_path().native(), Links::refuse);
    return item.from.is_absolute() &&
           moveBack({trash.number(), item.trashed.filename().native()}, item.identity,
                    holdFolder("/").number(), item.from.relative_path(), [](int) { return true; });
}

bool MacDisposal::deleteOutright(const RemovalTarget &target)
{
    const auto entry = passGuard(target);
    return entry && deleteGuarded(*entry, target);
}

bool MacDisposal::emptyFolder(const RemovalTarget &folder, const MustStay &mustStay)
{
    const auto entry = passGuard(folder);
    return entry && emptyGuarded(*entry, folder, mustStay);
}

TrashListing MacDisposal::listTrash(const Path &path, const MustStay &mustStay)
{
    m_permissions.note(Permission::fullDiskAccess, isKeptClosed(path));
    const Descriptor folder = holdFolder(AT_FDCWD, path.native(), Links::refuse);
    if (!folder.isOpen() || !canBeListed(folder.number()))
        return {.isWhole = false};
    TrashListing listing = {.items = entriesIn(folder.number())};
    leaveOut(listing, path, mustStay);
    return listing;
}

bool MacDisposal::emptyTrash(const RemovalTarget &target, const TrashListing &listed,
                             const MustStay &mustStay)
{
    const auto entry = passGuard(target);
    if (!entry)
        return false;
    const Descriptor folder = holdFolder(entry->folder.number(), entry->name, Links::refuse);
    const auto identity = identityOf(folder.number());
    return identity && identity->isSameThing(target.identity) &&
           removeListed(folder.number(), target.path, listed.items, mustStay) && listed.isWhole;
}

} // namespace swabby
