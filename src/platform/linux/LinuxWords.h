#pragma once

#include "platform/MachineWords.h"

#include <string>
#include <string_view>

namespace swabby {

/// The words of a Linux computer.
/// @param osRelease the text of os-release, which names the distribution; may be empty
/// @param desktops colon-separated names of the running desktop, may be empty
MachineWords linuxWords(std::string_view osRelease, const std::string &desktops);

} // namespace swabby
