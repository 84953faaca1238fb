#include "platform/posix/EntryMove.h"

#include "platform/posix/RenameWithoutReplacing.h"

#include <cerrno>

namespace swabby {
namespace {

MoveResult rename(const EntryAt &from, const EntryAt &to)
{
    if (renameWithoutReplacing(from.folder, from.name.c_str(), to.folder, to.name.c_str()))
        return MoveResult::moved;
    if (errno == EEXIST)
        return MoveResult::nameTaken;
    return errno == EXDEV ? MoveResult::otherDisk : MoveResult::refused;
}

/// A folder that changes its parent is written to, which its rights may forbid even its owner.
MoveResult renameUnlocked(const EntryAt &from, const EntryAt &to, const FileIdentity &what)
{
    const Descriptor folder = holdFolder(from.folder, from.name, Links::refuse);
    const auto identity = identityOf(folder.number());
    if (!identity || !identity->isSameThing(what))
        return MoveResult::refused;
    const auto before = unlockOwnFolder(folder.number());
    if (!before)
        return MoveResult::refused;
    const MoveResult result = rename(from, to);
    setRights(folder.number(), *before);
    return result;
}

bool isSame(const EntryAt &entry, const FileIdentity &what)
{
    const auto found = identityIn(entry.folder, entry.name);
    return found && found->isSameThing(what);
}

/// The move itself may bear it anew, where one file system lies over another.
FileIdentity withoutBirth(FileIdentity identity)
{
    identity.bornNanoseconds = 0;
    return identity;
}

/// A byte that continues a character of UTF-8.
bool continues(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::string cut(const std::string &text, std::size_t largest)
{
    if (text.size() <= largest)
        return text;
    std::size_t end = largest;
    while (end > 0 && largest - end < 3 && continues(text[end]))
        --end;
    return text.substr(0, end == 0 || continues(text[end]) ? largest : end);
}

} // namespace

MoveResult moveEntry(const EntryAt &from, const EntryAt &to, const FileIdentity &what)
{
    if (!isSame(from, what))
        return MoveResult::refused;
    MoveResult result = rename(from, to);
    if (result == MoveResult::refused && errno == EACCES && what.kind == FileKind::folder)
        result = renameUnlocked(from, to, what);
    // Between the look and the move something else may have taken its place.
    if (result != MoveResult::moved || isSame(to, withoutBirth(what)))
        return result;
    // When its place is taken again by now, it is better where it is than nowhere.
    return rename(to, from) == MoveResult::moved ? MoveResult::refused : MoveResult::moved;
}

std::optional<FileIdentity> notedThing(const EntryAt &entry, const FileIdentity &noted)
{
    auto found = identityIn(entry.folder, entry.name);
    FileIdentity expected = withoutBirth(noted);
    if (!found)
        return found;
    expected.device = found->device;
    return found->isSameThing(expected) ? found : std::nullopt;
}

bool moveBack(const EntryAt &entry, const FileIdentity &noted, int start, const std::filesystem::path &path,
              const MadeFolders::Pleases &pleases)
{
    const auto found = notedThing(entry, noted);
    if (!found)
        return false;
    MadeFolders parent(start, path.parent_path(), 0777, pleases);
    if (moveEntry(entry, {parent.last().number(), path.filename().native()}, *found) == MoveResult::moved)
        return true;
    parent.undo();
    return false;
}

std::string numberedName(const std::string &name, int attempt, std::size_t largest)
{
    constexpr std::size_t longestEnding = 16;
    const std::size_t dot = name.rfind('.');
    const bool hasEnding = dot != std::string::npos && dot > 0 && name.size() - dot <= longestEnding;
    const std::string stem = name.substr(0, hasEnding ? dot : name.size());
    const std::string ending =
        (attempt > 1 ? ' ' + std::to_string(attempt) : std::string()) + name.substr(stem.size());
    return cut(stem, largest - ending.size()) + ending;
}

int firstFreeAttempt(const std::function<bool(int attempt)> &isTaken)
{
    constexpr int largest = 1 << 30;
    int taken = 1;
    int untaken = 2;
    while (untaken < largest && isTaken(untaken)) {
        taken = untaken;
        untaken *= 2;
    }
    while (untaken - taken > 1) {
        const int middle = taken + (untaken - taken) / 2;
        (isTaken(middle) ? taken : untaken) = middle;
    }
    return untaken;
}

} // namespace swabby
