#pragma once

#include "platform/StartupSource.h"

#include <vector>

namespace swabby {

/// Adds the name of its file to each label that another entry of the same scope has too: a person, and every
/// list, would take them for one.
void tellApart(std::vector<StartupEntry> &entries);

} // namespace swabby
