#pragma once

namespace swabby {

/// Lets the calling thread give way to whatever the person is doing.
void useUtilityPriority();

} // namespace swabby
