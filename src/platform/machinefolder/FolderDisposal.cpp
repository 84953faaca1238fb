#include "platform/machinefolder/FolderDisposal.h"

#include "platform/FolderListing.h"
#include "platform/Utf8.h"
#include "platform/posix/EntryMove.h"
#include "platform/posix/HeldFolder.h"

#include <algorithm>
#include <fcntl.h>

namespace swabby {
namespace {

using Path = std::filesystem::path;

constexpr std::size_t longestName = 255;

QJsonObject fromTo(const Path &from, const Path &to)
{
    return {{QStringLiteral("from"), textOf(from.native())}, {QStringLiteral("to"), textOf(to.native())}};
}

/// The same place by the path that needs no links above its last part.
Path withoutLinks(const Path &path)
{
    std::error_code problem;
    const Path folder = std::filesystem::weakly_canonical(path.parent_path(), problem);
    return problem ? path : folder / path.filename();
}

Path withoutSlash(const Path &path)
{
    const Path normal = path.lexically_normal();
    return normal.has_filename() ? normal : normal.parent_path();
}

} // namespace

bool FolderDisposal::isInside(int folder) const
{
    const auto whole = identityOf(holdFolder(m_folder).number());
    return whole && liesAtOrUnder(folder, *whole);
}

bool FolderDisposal::isRefused(const Path &path) const
{
    return std::any_of(m_trashRefuses.begin(), m_trashRefuses.end(), [&](const Path &given) {
        const Path refused = withoutSlash(given);
        return isAtOrUnder(path, refused) || isAtOrUnder(withoutLinks(path), withoutLinks(refused));
    });
}

std::optional<TrashedItem> FolderDisposal::moveToTrash(const RemovalTarget &target,
                                                       const BeforeMove &beforeMove)
{
    const auto entry = passTrashGuard(target);
    if (!entry || !isInside(entry->folder.number()))
        return std::nullopt;
    m_permissions.noteRemoval(target.path, true); // what has to be allowed is described by itself
    if (isRefused(target.path))
        return std::nullopt;
    const Descriptor home = holdFolder(m_folder / "home");
    if (!isInside(home.number()))
        return std::nullopt;
    const Descriptor trash = holdOwnFolder(home.number(), ".Trash", Missing::make);
    const auto identity = identityOf(trash.number());
    if (!identity || liesAtOrUnder(entry->folder.number(), *identity) ||
        liesAtOrUnder(trash.number(), target.identity))
        return std::nullopt;

    const auto nameOf = [&](int attempt) { return numberedName(entry->name, attempt, longestName); };
    const auto isTaken = [&](int attempt) { return identityIn(trash.number(), nameOf(attempt)).has_value(); };
    int attempt = isTaken(1) ? firstFreeAttempt(isTaken) : 1;
    MoveResult result = MoveResult::nameTaken;
    for (; result == MoveResult::nameTaken; ++attempt) {
        const TrashedItem item = {target.path, trashPath() / nameOf(attempt), target.identity};
        if (beforeMove && !beforeMove(item))
            return std::nullopt;
        result = moveEntry({entry->folder.number(), entry->name}, {trash.number(), nameOf(attempt)},
                           target.identity);
        if (result != MoveResult::moved)
            continue;
        m_events.write(QStringLiteral("trash"), fromTo(item.from, item.trashed));
        return item;
    }
    return std::nullopt;
}

bool FolderDisposal::putBack(const TrashedItem &item)
{
    const Descriptor trash = holdFolder(AT_FDCWD, trashPath().native(), Links::refuse);
    if (item.trashed.parent_path() != trashPath() || !isInside(trash.number()) ||
        !isAtOrUnder(item.from, m_folder) ||
        !moveBack({trash.number(), item.trashed.filename().native()}, item.identity,
                  holdFolder(m_folder).number(), item.from.lexically_relative(m_folder),
                  [this](int folder) { return isInside(folder); }))
        return false;
    m_events.write(QStringLiteral("putBack"), fromTo(item.trashed, item.from));
    return true;
}

bool FolderDisposal::deleteOutright(const RemovalTarget &target)
{
    const auto entry = passGuard(target);
    if (!entry || !isInside(entry->folder.number()) || !deleteGuarded(*entry, target))
        return false;
    m_events.write(QStringLiteral("delete"), textOf(target.path.native()));
    return true;
}

ChildGone FolderDisposal::deleted(const Path &folder) const
{
    return [this, folder](const std::string &name) {
        m_events.write(QStringLiteral("delete"), textOf((folder / name).native()));
    };
}

bool FolderDisposal::emptyFolder(const RemovalTarget &target, const MustStay &mustStay)
{
    const auto entry = passGuard(target);
    return entry && isInside(entry->folder.number()) &&
           emptyGuarded(*entry, target, mustStay, deleted(target.path));
}

TrashListing FolderDisposal::listTrash(const Path &trash, const MustStay &mustStay)
{
    m_permissions.note(Permission::fullDiskAccess, isKeptClosed(trash));
    const Descriptor folder = holdFolder(AT_FDCWD, trash.native(), Links::refuse);
    if (!isInside(folder.number()) || !canBeListed(folder.number()))
        return {.isWhole = false};
    TrashListing listing = {.items = entriesIn(folder.number())};
    leaveOut(listing, trash, mustStay);
    return listing;
}

bool FolderDisposal::emptyTrash(const RemovalTarget &target, const TrashListing &listed,
                                const MustStay &mustStay)
{
    const auto entry = passGuard(target);
    if (!entry || !isInside(entry->folder.number()))
        return false;
    const Descriptor folder = holdFolder(entry->folder.number(), entry->name, Links::refuse);
    const auto identity = identityOf(folder.number());
    return identity && identity->isSameThing(target.identity) &&
           removeListed(folder.number(), target.path, listed.items, mustStay, deleted(target.path)) &&
           listed.isWhole;
}

} // namespace swabby
