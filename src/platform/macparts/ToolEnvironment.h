#pragma once

namespace swabby {

/// Gives this process, and so its tools, what somebody has who starts it in a terminal and the Finder's
/// programs have not: in PATH the folders in which Homebrew puts programs, and a locale in which text is
/// UTF-8, unless the person's own names a character set. Before the first thread.
void prepareEnvironmentForTools();

} // namespace swabby
