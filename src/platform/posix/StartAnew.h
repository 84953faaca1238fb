#pragma once

#include <string>
#include <vector>

namespace swabby {

/// Puts that program, with these arguments, this process's environment and the key that was taken out of it,
/// in the place of this process. Returns only when that fails; the reason is in errno then.
void startAnew(const std::string &program, const std::vector<std::string> &arguments);

} // namespace swabby
