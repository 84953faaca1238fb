#pragma once

#include "platform/Shell.h"

#include <string>

namespace swabby {

/// The package that brought the file of that path, with its version, as the system's own records have it:
/// "firefox-esr 128.5.0esr-1". Empty when none did. Runs the tool that reads them: background work.
std::string packageOwning(Shell &shell, const std::string &file);

/// The first package in what dpkg-query prints for a search; empty for none.
std::string packageFromSearch(std::string_view text);

} // namespace swabby
