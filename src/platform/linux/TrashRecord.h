#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace swabby {

// The text of a .trashinfo file, as the Trash specification of freedesktop.org wants it.

inline constexpr std::string_view trashRecordEnding = ".trashinfo";

/// What tells where something in the Trash was, and since when it is there (local time of those seconds
/// since 1970). The path is bytes, absolute or relative to the top folder of its mount.
std::string trashRecordText(const std::string &path, double now);

/// The path of such a text; no value when it holds none that can be read.
std::optional<std::string> pathOfTrashRecord(std::string_view text);

} // namespace swabby
