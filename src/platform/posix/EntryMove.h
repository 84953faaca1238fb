#pragma once

#include "platform/posix/HeldFolder.h"

#include <functional>
#include <string>

namespace swabby {

/// A name in a folder that somebody holds open.
struct EntryAt {
    int folder;
    std::string name;
};

enum class MoveResult { moved, nameTaken, otherDisk, refused };

/// Moves that very thing, never over something else and never onto another disk. With any result but moved
/// it is where it was. A folder of the user's own that may not be written is moved all the same.
MoveResult moveEntry(const EntryAt &from, const EntryAt &to, const FileIdentity &what);

/// What lies there when it is what was noted, perhaps before a restart, which may number the disks anew; no
/// value when it is something else.
std::optional<FileIdentity> notedThing(const EntryAt &entry, const FileIdentity &noted);

/// Moves what was noted back to that path under a held folder, never over something that is there meanwhile;
/// folders above it that are gone are made again, as long as every one on the way pleases. False when it
/// stays.
bool moveBack(const EntryAt &entry, const FileIdentity &noted, int start, const std::filesystem::path &path,
              const MadeFolders::Pleases &pleases);

/// The name for the attempt of that number, from 1: the name itself, then with the number before its
/// ending, as in "film 2.mov". Cut to that many bytes, where it can be between two characters.
std::string numberedName(const std::string &name, int attempt, std::size_t largest);

/// The first attempt after a taken one that seems free, found without trying them all: there may be
/// thousands of the same name.
int firstFreeAttempt(const std::function<bool(int attempt)> &isTaken);

} // namespace swabby
