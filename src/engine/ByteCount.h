#pragma once

#include <QtCore/QString>

#include <cstdint>

namespace swabby {

/// A size as people read it on a disk: decimal units, "1.2 GB", "846.2 MB", "512 bytes", "Zero KB".
QString fileByteCount(std::int64_t bytes);

/// The same in powers of 1024, as memory is counted.
QString memoryByteCount(std::uint64_t bytes);

} // namespace swabby
