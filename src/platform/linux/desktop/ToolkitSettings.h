#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace swabby {

/// The toolkits' settings by their names: figures and words.
using ToolkitSettings = std::map<std::string, std::variant<std::int32_t, std::string>>;

/// What an XSETTINGS property holds, as far as it can be read. Pure.
ToolkitSettings parseToolkitSettings(std::string_view property);

/// Whether they ask for dark windows: an application's own wish, or a theme that says so in its name. None
/// when they leave it open, as a theme does that may be called anything.
std::optional<bool> prefersDark(const ToolkitSettings &settings);

} // namespace swabby
