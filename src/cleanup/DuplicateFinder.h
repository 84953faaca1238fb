#pragma once

#include "cleanup/DuplicateGroup.h"
#include "cleanup/ExcludeList.h"
#include "cleanup/duplicates/KeptCopy.h"
#include "platform/Disposal.h"
#include "platform/ScanControl.h"

#include <optional>
#include <string>
#include <vector>

namespace swabby {

/// What became of the copies that were to go.
struct DuplicateRemoval {
    std::vector<TrashedItem> trashed;
    std::int64_t stayed = 0; ///< copies that are still where they were
};

/// Everything here reads files whole and blocks for as long as the disk does: background work only.
namespace DuplicateFinder {

/// The regular files of 4,097 bytes and more that lie directly in the folders, grouped by their bytes, the
/// groups that waste most first. Folders are absolute; one that cannot be listed is skipped, and so is a file
/// that cannot be read, that changes meanwhile or that has to stay. A file with several ways to it is one
/// file, known by the first. The first of a group is the one to keep: of the folders the one given first, in
/// it the file that is no copy by its name, then by its age. Nothing when stopped.
std::vector<DuplicateGroup> scan(const std::vector<std::filesystem::path> &folders,
                                 const ExcludeList &excludes, const ScanControl &control,
                                 FirstBy firstBy = FirstBy::birth);

/// The digest of a whole regular file as 64 lower-case hexadecimal digits. No value when it is a link or
/// anything else, cannot be read to its end or the stop came before.
std::optional<std::string> streamingSHA256(const std::filesystem::path &path, const StopToken &stop = {});

/// Moves every copy but the first of each group to the Trash. A copy goes only while it and the kept one are
/// what was read, hold the same bytes now, and the copy lies directly in one of the folders, and once that is
/// told before it moves.
DuplicateRemoval removeDuplicates(const std::vector<DuplicateGroup> &groups,
                                  const std::vector<std::filesystem::path> &allowedFolders,
                                  Disposal &disposal, const StopToken &stop = {},
                                  const BeforeMove &beforeMove = {});

} // namespace DuplicateFinder
} // namespace swabby
