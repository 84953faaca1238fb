#pragma once

namespace swabby {

/// Gives back to the system what has been freed in small pieces, and the pages of program code that were
/// needed once, as at the start or to open a window. Takes some milliseconds, now and when they are needed
/// again.
void giveMemoryBack();

} // namespace swabby
