#pragma once

#include "cleanup/duplicates/Reading.h"
#include "platform/posix/RegularFile.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace swabby {

/// How much of a file's beginning and of its end tells most different files of one size apart.
constexpr std::int64_t endSize = 4'096;

/// Told after every read of so many bytes; false ends the reading.
using OnRead = std::function<bool(std::int64_t bytes)>;

/// A number that differs for most files whose beginnings or ends differ, and is the same for equal files. No
/// value when they cannot be read.
std::optional<std::uint64_t> endsFingerprint(const RegularFile &file, ReadBuffer &buffer);

/// The 32 bytes of the SHA-256 of the whole file. No value when it cannot be read to its end, changes
/// meanwhile or the reading was ended.
std::optional<std::string> sha256Of(const RegularFile &file, ReadBuffer &buffer, const OnRead &onRead);

/// Whether both files hold the same bytes from end to end. False also when one cannot be read, changes
/// meanwhile or the reading was ended.
bool haveSameBytes(const RegularFile &left, const RegularFile &right, ReadBuffer &buffer,
                   const OnRead &onRead);

} // namespace swabby
