#include "platform/linux/LinuxDisposal.h"

#include "platform/linux/TrashFolder.h"
#include "platform/linux/TrashRecord.h"
#include "platform/posix/EntryMove.h"
#include "platform/posix/HeldFolder.h"
#include "platform/posix/TreeRemoval.h"

#include <cerrno>
#include <fcntl.h>
#include <set>

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
    std::string name;
};

/// The record comes first and keeps the name free from other programs until the file is there.
Moved moveInto(const TrashFolder &trash, const HeldEntry &entry, const FileIdentity &identity,
               const std::string &recordText)
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
        const MoveResult result =
            moveEntry({entry.folder.number(), entry.name}, {trash.files.number(), name}, identity);
        if (result == MoveResult::moved)
            return {result, name};
        removeRecord(trash, name);
        if (result != MoveResult::nameTaken)
            return {result, {}};
    }
    return {};
}

std::optional<TrashedItem> trashed(const TrashFolder &trash, const HeldEntry &entry,
                                   const RemovalTarget &target, double now, MoveResult *result)
{
    if (isOfTheTrash(trash, entry, target.identity))
        return std::nullopt;
    std::string recordPath = target.path.native();
    if (!trash.topFolder.empty()) {
        const Path folder = pathOf(entry.folder.number());
        if (folder.empty())
            return std::nullopt;
        recordPath = (folder / entry.name).lexically_relative(trash.topFolder).native();
    }
    const Moved moved = moveInto(trash, entry, target.identity, trashRecordText(recordPath, now));
    *result = moved.result;
    if (moved.result != MoveResult::moved)
        return std::nullopt;
    return TrashedItem{target.path, trash.path / "files" / moved.name, target.identity};
}

/// Where the thing of that record was, as an absolute path; empty when the record does not say.
Path originOf(const TrashFolder &trash, const std::string &recordName)
{
    const auto path = pathOfTrashRecord(recordIn(trash, recordName));
    return path ? trash.topFolder / *path : Path();
}

/// Records of nothing.
std::set<std::string> strayRecords(const TrashFolder &trash)
{
    std::set<std::string> strays;
    for (const std::string &record : namesIn(trash.info.number())) {
        const bool isRecord = record.ends_with(trashRecordEnding);
        if (!isRecord ||
            !identityIn(trash.files.number(), record.substr(0, record.size() - trashRecordEnding.size())))
            strays.insert(record);
    }
    return strays;
}

} // namespace

std::optional<TrashedItem> LinuxDisposal::moveToTrash(const RemovalTarget &target)
{
    const auto entry = passGuard(target);
    if (!entry)
        return std::nullopt;
    MoveResult result = MoveResult::otherDisk;
    const auto home = homeTrash(m_dataHome);
    const auto homeDisk = identityOf(home ? home->folder.number() : holdFolder(m_dataHome).number());
    if (!homeDisk)
        return std::nullopt;
    if (homeDisk->device == target.identity.device) {
        if (!home)
            return std::nullopt;
        const auto item = trashed(*home, *entry, target, m_clock.now(), &result);
        // Two views of one disk are two disks for a move.
        if (item || result != MoveResult::otherDisk)
            return item;
    }
    const auto trash = trashOfMount(entry->folder.number());
    return trash ? trashed(*trash, *entry, target, m_clock.now(), &result) : std::nullopt;
}

bool LinuxDisposal::putBack(const TrashedItem &item)
{
    const Path files = item.trashed.parent_path();
    const auto trash = existingTrash(files.parent_path(), m_dataHome);
    const std::string name = item.trashed.filename().native();
    if (!trash || files.filename() != "files" || !item.from.is_absolute())
        return false;
    const auto found = notedThing({trash->files.number(), name}, item.identity);
    if (!found)
        return false;

    const Descriptor root = holdFolder("/");
    MadeFolders parent(root.number(), item.from.parent_path().relative_path(), 0777,
                       [](int) { return true; });
    if (moveEntry({trash->files.number(), name}, {parent.last().number(), item.from.filename().native()},
                  *found) != MoveResult::moved) {
        parent.undo();
        return false;
    }
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

bool LinuxDisposal::emptyTrash(const RemovalTarget &target, const MustStay &mustStay)
{
    const auto entry = passGuard(target);
    const auto trash = entry ? existingTrash(target.path, m_dataHome) : std::nullopt;
    const auto identity = trash ? identityOf(trash->folder.number()) : std::nullopt;
    if (!identity || !identity->isSameThing(target.identity))
        return false;

    const std::set<std::string> straysBefore = strayRecords(*trash);
    const auto hasToStay = [&](const Path &path) {
        const Path origin = originOf(*trash, recordNameOf(path.filename().native()));
        return mustStay && (mustStay(path) || (!origin.empty() && mustStay(origin)));
    };
    bool isEmpty = removeChildren(trash->files.number(), target.path / "files", hasToStay,
                                  [&](const std::string &name) { removeRecord(*trash, name); });
    // Another program's record may wait for its file: it waited both times only if nobody comes.
    for (const std::string &record : strayRecords(*trash))
        if (straysBefore.count(record) != 0)
            isEmpty = removeEntry(trash->info.number(), record) && isEmpty;
    // What other programs keep here while they empty it themselves, and their sums of it.
    if (const Descriptor expunged = holdFolder(trash->folder.number(), "expunged", Links::refuse);
        expunged.isOpen())
        isEmpty = removeChildren(expunged.number(), target.path / "expunged", mustStay) && isEmpty;
    ::unlinkat(trash->folder.number(), "directorysizes", 0);
    return isEmpty;
}

} // namespace swabby
