#pragma once

namespace swabby {

/// From here on no other program of the user's can read this one's memory, and a crash leaves no picture of
/// it on disk. For the rest of the process, since the memory a secret passed through is not wiped everywhere.
void keepMemoryPrivate();

} // namespace swabby
