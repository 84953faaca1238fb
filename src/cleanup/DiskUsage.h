#pragma once

#include "cleanup/Search.h"
#include "platform/Shell.h"

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

namespace swabby {

/// The bytes in the text of `du -sk`; 0 for any other text, and for more than fit.
std::int64_t parseDiskUsage(std::string_view text);

/// What a file or folder occupies on the disk, in bytes; 0 when it cannot be measured. One tool runs:
/// background work only.
std::int64_t directorySize(Shell &shell, const std::filesystem::path &path, const StopToken &stop = {});

/// The same for many, side by side, in the order given. After a stop the rest measures 0.
std::vector<std::int64_t> directorySizes(const Search &search,
                                         const std::vector<std::filesystem::path> &paths);

/// What goes when a folder is emptied: the folder itself when nothing in it must stay, else those of its
/// children that may go.
std::vector<std::filesystem::path> partsThatMayGo(const std::filesystem::path &folder,
                                                  const ExcludeList &excludes);

} // namespace swabby
