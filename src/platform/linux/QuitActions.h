#pragma once

#include "platform/ProcessControl.h"
#include "platform/StopToken.h"

#include <string>

namespace swabby {

enum class QuitAction { look, take };

/// Whether a program offers to quit over the session's bus: the action "quit" of an application, "file_quit"
/// of a main window, a media player's Quit. Takes it when that is said: false then as well when the program
/// refuses, or has ended meanwhile. What has its id by then is not asked. Blocks for a second at most.
bool offersQuit(QuitAction what, const std::string &busAddress, const ProcessIdentity &process,
                ProcessControl &control, const StopToken &stop);

} // namespace swabby
