#pragma once

#include <filesystem>
#include <vector>

namespace swabby {

/// What lies directly in a folder, hidden names too, in the order the disk gives it; empty when it cannot
/// be listed. Blocks for the disk.
std::vector<std::filesystem::path> childrenOf(const std::filesystem::path &folder);

/// Whether the path lies somewhere below the folder, going by their names alone.
bool isUnder(const std::filesystem::path &path, const std::filesystem::path &folder);
/// The same, or is that folder.
bool isAtOrUnder(const std::filesystem::path &path, const std::filesystem::path &folder);

} // namespace swabby
