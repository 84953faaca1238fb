#pragma once

#include "platform/ProcessSurvey.h"

#include <string_view>

namespace swabby {

/// The rows of the last sample of `nettop -P -x -d -L 2`. Empty without its header.
std::vector<NetworkRow> parseNettop(std::string_view text);

} // namespace swabby
