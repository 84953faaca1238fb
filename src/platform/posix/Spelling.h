#pragma once

#include <filesystem>

namespace swabby {

/// Whether a disk on the way finds one of the path's names in other letters too, capitals for small ones or
/// another form of an accent. Asks the disk once or twice for each name.
bool hasOtherSpelling(const std::filesystem::path &path);

/// The one spelling that stands for all of them.
std::filesystem::path folded(const std::filesystem::path &path);

} // namespace swabby
