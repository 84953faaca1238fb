#pragma once

#include <functional>
#include <string>

namespace swabby {

/// Does the work in a child with mounts of its own; "SKIP" when that is not permitted. On Linux.
std::string inOwnMounts(const std::function<std::string()> &work);

} // namespace swabby
