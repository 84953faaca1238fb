#include "platform/linux/LinuxDisposal.h"

#include "platform/linux/TrashFolder.h"
#include "platform/linux/TrashRecord.h"
#include "platform/posix/EntryMove.h"
#include "platform/posix/HeldFolder.h"
#include "platform/posix/TreeRemoval.h"

#include <cerrno>
#include <fcntl.h>

namespace swabby {
namespace {

using Path = std::filesystem::path;

constexpr std::size_t longestName = 255;
constexpr std::size_t longestTrashedName = longestName - trashRecordEnding.size();

std::string recordNameOf(const std::string &name)
{
    return name + std::string(trashRecordEnding);
}

void removeRecord(const TrashFolder &trash, const std::string &name)
{
    ::unlinkat(trash.info.number(), recordNameOf(name).c_str(), 0);
}

bool isTaken(const TrashFolder &trash, const std::string &name)
{
    return identityIn(trash.info.number(), recordNameOf(name)) || identityIn(trash.files.number(), name);
}

/// The Trash, what contains it and what it contains are not moved into it.
bool isOfTheTrash(const TrashFolder &trash, const HeldEntry &entry, const FileIdentity &identity)
{
    const auto own = identityOf(trash.folder.number());
    return !own || liesAtOrUnder(entry.folder.number(), *own) ||
           (identity.kind == FileKind::folder && liesAtOrUnder(trash.folder.number(), identity));
}

struct Moved {
    MoveResult result = MoveResult::refused;
    std::optional<TrashedItem> item;
};

/// The record comes first and keeps the name free from other programs until the file is there.
Moved moveInto(const TrashFolder &trash, const HeldEntry &entry, const RemovalTarget &target,
               const std::string &recordText, const BeforeMove &beforeMove)
{
    const auto nameOf = [&](int attempt) { return numberedName(entry.name, attempt, longestTrashedName); };
    int attempt = 1;
    if (isTaken(trash, nameOf(1)))
        attempt = firstFreeAttempt([&](int number) { return isTaken(trash, nameOf(number)); });
    for (const int last = attempt + 10'000; attempt < last; ++attempt) {
        const std::string name = nameOf(attempt);
        if (!writeRecord(trash, recordNameOf(name), recordText)) {
            if (errno == EEXIST)
                continue;
            return {};
        }
        const TrashedItem item = {target.path, trash.path / "files" / name, target.identity};
        const MoveResult result = !beforeMove || beforeMove(item)
                                      ? moveEntry({entry.folder.number(), entry.name},
                                                  {trash.files.number(), name}, target.identity)
                                      : MoveResult::refused;
        if (result == MoveResult::moved)
            return {result, item};
        removeRecord(trash, name);
        if (result != MoveResult::nameTaken)
            return {result, {}};
    }
    return {};
}

Moved trashed(const TrashFolder &trash, const HeldEntry &entry, const RemovalTarget &target, double now,
              const BeforeMove &beforeMove)
{
    if (isOfTheTrash(trash, entry, target.identity))
        return {};
    std::string recordPath = target.path.native();
    if (!trash.topFolder.empty()) {
        const Path folder = pathOf(entry.folder.number());
        if (folder.empty())
            return {};
        recordPath = (folder / entry.name).lexically_relative(trash.topFolder).native();
    }
    return moveInto(trash, entry, target, trashRecordText(recordPath, now), beforeMove);
}

/// Where the thing of that record was, as an absolute path; empty when the record does not say.
Path originOf(const TrashFolder &trash, const std::string &recordName)
{
    const auto path = pathOfTrashRecord(recordIn(trash, recordName));
    return path ? trash.topFolder / *path : Path();
}

bool isRecordOfSomething(const TrashFolder &trash, const std::string &record)
{
    return record.ends_with(trashRecordEnding) &&
           identityIn(trash.files.number(), record.substr(0, record.size() - trashRecordEnding.size()));
}

/// Where other programs keep what they have begun to delete.
Descriptor expungedIn(const TrashFolder &trash)
{
    return holdFolder(trash.folder.number(), "expunged", Links::refuse);
}

/// The same for things in the Trash, by where they are and where they were.
MustStay mustStayFrom(const TrashFolder &trash, const MustStay &mustStay)
{
    if (!mustStay)
        return {};
    return [&trash, &mustStay](const Path &path) {
        const Path origin = originOf(trash, recordNameOf(path.filename().native()));
        return mustStay(path) || (!origin.empty() && mustStay(origin));
    };
}

} // namespace

std::optional<TrashedItem> LinuxDisposal::moveToTrash(const RemovalTarget &target,
                                                      const BeforeMove &beforeMove)
{
    const auto entry = passTrashGuard(target);
    const auto folder = entry ? identityOf(entry->folder.number()) : std::nullopt;
    // A mount point is not moved, and no Trash has to be made for it.
    if (!folder || mountOf(entry->folder.number()) != mountOf(entry->folder.number(), entry->name))
        return std::nullopt;
    const auto home = homeTrash(m_dataHome);
    const auto homeDisk = identityOf(home ? home->folder.number() : holdFolder(m_dataHome).number());
    if (!homeDisk)
        return std::nullopt;
    if (homeDisk->device == folder->device) {
        if (!home)
            return std::nullopt;
        const Moved moved = trashed(*home, *entry, target, m_clock.now(), beforeMove);
        // Two views of one disk are two disks for a move.
        if (moved.result != MoveResult::otherDisk)
            return moved.item;
    }
    const auto trash = trashOfMount(entry->folder.number());
    return trash ? trashed(*trash, *entry, target, m_clock.now(), beforeMove).item : std::nullopt;
}

bool LinuxDisposal::putBack(const TrashedItem &item)
{
    const Path files = item.trashed.parent_path();
    const auto trash = existingTrash(files.parent_path(), m_dataHome);
    const std::string name = item.trashed.filename().native();
    if (!trash || files.filename() != "files" || !item.from.is_absolute())
        return false;
    if (!moveBack({trash->files.number(), name}, item.identity, holdFolder("/").number(),
                  item.from.relative_path(), [](int) { return true; }))
        return false;
    removeRecord(*trash, name);
    return true;
}

bool LinuxDisposal::deleteOutright(const RemovalTarget &target)
{
    const auto entry = passGuard(target);
    return entry && deleteGuarded(*entry, target);
}

bool LinuxDisposal::emptyFolder(const RemovalTarget &folder, const MustStay &mustStay)
{
    const auto entry = passGuard(folder);
    return entry && emptyGuarded(*entry, folder, mustStay);
}

TrashListing LinuxDisposal::listTrash(const Path &path, const MustStay &mustStay)
{
    const auto trash = existingTrash(path, m_dataHome);
    if (!trash || !canBeListed(trash->files.number()))
        return {.isWhole = false};
    TrashListing listing = {.items = entriesIn(trash->files.number()),
                            .strays = entriesIn(trash->info.number()),
                            .remains = entriesIn(expungedIn(*trash).number())};
    std::erase_if(listing.strays,
                  [&](const ListedEntry &record) { return isRecordOfSomething(*trash, record.name); });
    leaveOut(listing, path / "files", mustStayFrom(*trash, mustStay));
    return listing;
}

bool LinuxDisposal::emptyTrash(const RemovalTarget &target, const TrashListing &listed,
                               const MustStay &mustStay)
{
    const auto entry = passGuard(target);
    const auto trash = entry ? existingTrash(target.path, m_dataHome) : std::nullopt;
    const auto identity = trash ? identityOf(trash->folder.number()) : std::nullopt;
    if (!identity || !identity->isSameThing(target.identity))
        return false;

    const bool areItemsGone = removeListed(trash->files.number(), target.path / "files", listed.items,
                                           mustStayFrom(*trash, mustStay),
                                           [&](const std::string &name) { removeRecord(*trash, name); });
    std::vector<ListedEntry> strays = listed.strays;
    // What one of them told of may have come meanwhile.
    std::erase_if(strays,
                  [&](const ListedEntry &record) { return isRecordOfSomething(*trash, record.name); });
    const bool areStraysGone = removeListed(trash->info.number(), target.path / "info", strays, {});
    const bool areRemainsGone =
        removeListed(expungedIn(*trash).number(), target.path / "expunged", listed.remains, mustStay);
    // Other programs' sums of what they saw there.
    ::unlinkat(trash->folder.number(), "directorysizes", 0);
    return listed.isWhole && areItemsGone && areStraysGone && areRemainsGone;
}

} // namespace swabby
