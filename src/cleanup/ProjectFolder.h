#pragma once

#include <filesystem>

namespace swabby {

// Both take a folder in which dependencies were found, and the folder that was searched. Both block for the
// disk.

/// Whether somebody develops in it. What lies in an application, in a portable program (resources/app, or a
/// program file of its own beside it), in a backup or in the Trash is used as it is.
bool isProject(const std::filesystem::path &folder, const std::filesystem::path &searched);

/// What is touched by who works on it: the nearest folder under version control that it is or lies in, else
/// the folder itself.
std::filesystem::path workFolder(const std::filesystem::path &folder, const std::filesystem::path &searched);

} // namespace swabby
