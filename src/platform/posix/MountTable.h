#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace swabby {

/// Where mounts show that place, or a part of it, once more; none for a path that stands alone. The path is
/// absolute and without links. Reads the system's table of mounts and waits for no disk.
std::vector<std::filesystem::path> otherWaysTo(const std::filesystem::path &path);

/// The same as the lines of such a table have it.
std::vector<std::filesystem::path> otherWaysTo(const std::filesystem::path &path, std::string_view table);

} // namespace swabby
