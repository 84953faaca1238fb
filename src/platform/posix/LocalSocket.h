#pragma once

#include "platform/posix/Descriptor.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>

namespace swabby {

/// A socket in the file system that listens there for connections of the same user's programs, and replaces
/// what stood at the path. Does not wait; not open on failure.
Descriptor listenAt(const std::filesystem::path &path);

/// The next program that has connected; not open when there is none. Does not wait.
Descriptor acceptFrom(const Descriptor &listener);

/// Whether all of the words were taken. Does not wait.
bool sayTo(const Descriptor &socket, std::string_view words);

/// What has been said so far, up to that many bytes; empty when the other one has hung up. Does not wait.
std::string hearFrom(const Descriptor &socket, std::size_t most);

/// Connects, says the words and gives the answer up to the end or to that many bytes; empty when nobody
/// listens or answers in time. Waits.
std::string askAt(const std::filesystem::path &path, std::string_view words, std::size_t longestAnswer,
                  std::chrono::milliseconds patience);

} // namespace swabby
