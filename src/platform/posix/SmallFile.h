#pragma once

#include <QtCore/QByteArray>

#include <cstdint>
#include <filesystem>

namespace swabby {

/// Everything in a regular file, links followed. Empty when there is none, it may not be read or is larger
/// than that. Blocks for the disk and nothing else: a pipe or a device is not opened.
QByteArray smallFile(const std::filesystem::path &path, std::int64_t largest);

} // namespace swabby
