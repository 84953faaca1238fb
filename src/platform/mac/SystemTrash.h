#pragma once

#include <filesystem>
#include <optional>

namespace swabby {

/// Moves it to the Trash of its volume, as the file manager does, and gives where it lies now. No value, and
/// it stays, when the system refuses. Follows no link at the end of the path. Blocks for the disk; any
/// thread.
std::optional<std::filesystem::path> moveToSystemTrash(const std::filesystem::path &item);

} // namespace swabby
