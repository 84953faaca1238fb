#include "cleanup/DuplicateFinder.h"
#include "cleanup/duplicates/Contents.h"

#include <algorithm>

namespace swabby {
namespace {

using Path = std::filesystem::path;

/// The file at the path, if it still is the one that was read when the group was found.
std::optional<RegularFile> openUnchanged(const Path &path, const FileIdentity &read)
{
    auto file = RegularFile::open(path);
    return file && file->identity().isSameThing(read) ? std::move(file) : std::nullopt;
}

bool isOneFile(const FileIdentity &left, const FileIdentity &right)
{
    return left.device == right.device && left.inode == right.inode;
}

bool leadsTo(const Path &path, const FileIdentity &identity)
{
    const auto now = FileIdentity::of(path);
    return now && now->isSameThing(identity);
}

/// Whether the copy can go without losing anything: both are read from end to end once more, for a file can
/// be rewritten in place and given its old time back, and the kept one must still be found at its path.
bool isSpare(const Path &copyPath, const FileIdentity &copyRead, const Path &keptPath,
             const FileIdentity &keptRead, ReadBuffer &buffer, const StopToken &stop)
{
    const auto kept = openUnchanged(keptPath, keptRead);
    const auto copy = openUnchanged(copyPath, copyRead);
    return kept && copy && !isOneFile(keptRead, copyRead) &&
           haveSameBytes(*kept, *copy, buffer, [&](std::int64_t) { return !stop.stopRequested(); }) &&
           leadsTo(keptPath, keptRead);
}

} // namespace

DuplicateRemoval DuplicateFinder::removeDuplicates(const std::vector<DuplicateGroup> &groups,
                                                   const std::vector<Path> &allowedFolders,
                                                   Disposal &disposal, const StopToken &stop,
                                                   const BeforeMove &beforeMove)
{
    DuplicateRemoval removal;
    ReadBuffer buffer;
    for (const DuplicateGroup &group : groups) {
        for (std::size_t number = 1; number < group.paths.size(); ++number) {
            const Path &copy = group.paths[number];
            const auto folder =
                std::find_if(allowedFolders.begin(), allowedFolders.end(), [&](const Path &allowed) {
                    return copy.has_filename() && allowed / copy.filename() == copy;
                });
            const bool mayGo = !stop.stopRequested() && folder != allowedFolders.end() &&
                               number < group.identities.size() &&
                               isSpare(copy, group.identities[number], group.paths.front(),
                                       group.identities.front(), buffer, stop);
            auto trashed = mayGo ? disposal.moveToTrash({copy, *folder, group.identities[number]}, beforeMove)
                                 : std::nullopt;
            if (trashed)
                removal.trashed.push_back(*std::move(trashed));
            else
                ++removal.stayed;
        }
    }
    return removal;
}

} // namespace swabby
