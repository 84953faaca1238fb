#pragma once

#include "platform/TextScan.h"
#include "platform/posix/Descriptor.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace swabby {

/// Opens a file or folder for reading, closed on exec; not open when that fails.
Descriptor openForReading(const std::string &path);

/// The first bytes of an open file, read from its beginning whatever was read before; empty on failure.
std::string_view readFromStart(int descriptor, char *buffer, std::size_t size);

/// The whole text of a file of at most a mebibyte; empty when it cannot be read or is larger. For the
/// kernel's own files and small configuration files: does not wait for anything but the disk.
std::string fileText(const std::string &path);

/// Where a symbolic link points, as it stands; empty when it is none or may not be read.
std::string linkTarget(const std::string &path);

/// Whether something lies at this absolute path, links followed; a relative one is nowhere.
bool isThere(const std::string &path);

/// The names in a folder without the dot entries, in no order; empty when it cannot be listed.
std::vector<std::string> folderEntries(const std::string &path);

/// The next line of the text, which loses it and its line end; no value at the end of the text.
std::optional<std::string_view> nextLine(std::string_view &text);

/// The next run of characters other than blanks, which the text loses; empty when there is none.
std::string_view nextWord(std::string_view &text);

/// A count of KiB, as the kernel gives memory; no value for more than any machine has.
std::optional<std::uint64_t> kibibytesOf(std::string_view word);

/// The number in a file that holds nothing else, such as the attributes under /sys.
std::optional<std::int64_t> fileNumber(const std::string &path);

} // namespace swabby
