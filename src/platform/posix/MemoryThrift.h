#pragma once

namespace swabby {

/// Gives what has been freed in small pieces back to the system. Takes a few milliseconds.
void giveMemoryBack();

} // namespace swabby
