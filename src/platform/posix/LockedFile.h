#pragma once

#include "platform/posix/Descriptor.h"

#include <filesystem>

namespace swabby {

enum class Turn { shared, alone };

/// A private file open for reading and appending, under a lock between programs that ends with it: shared,
/// made when it is missing, waiting for whoever has it alone, which shall never be for long; or alone, at
/// once or not at all. A pipe, a device or a link in its place is taken away. Not open when it cannot be had.
Descriptor lockedFile(const std::filesystem::path &path, Turn turn);

} // namespace swabby
