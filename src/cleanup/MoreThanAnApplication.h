#pragma once

#include <filesystem>

namespace swabby {

/// Whether more than an application or its leftovers lies at the path: something is under version control or
/// a library of games is there, up to two levels in it or in a folder around it as far as home. Going by what
/// the folders hold, links not followed. Blocks for the disk.
bool isMoreThanAnApplication(const std::filesystem::path &path, const std::filesystem::path &home);

} // namespace swabby
