#pragma once

#include "platform/ProcessSurvey.h"

#include <string_view>

namespace swabby {

/// The power column of the last sample of `top -l 2 -stats pid,command,power`. Empty without its header.
std::vector<PowerRow> parseTop(std::string_view text);

} // namespace swabby
