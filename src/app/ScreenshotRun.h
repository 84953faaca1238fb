#pragma once

#include "app/CommandLine.h"

namespace swabby {

class AppState;

/// Makes the toolkit draw without a display, at twice the size. Call before the application object.
void prepareForScreenshots();

/// Waits until the state has real figures, draws every view into the folder and gives the program's exit
/// status; what went wrong is one line on standard error.
int runScreenshots(AppState &state, const CommandLine &commandLine);

} // namespace swabby
