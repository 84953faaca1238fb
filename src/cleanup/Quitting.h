#pragma once

#include "engine/ProcessSample.h"
#include "platform/Machine.h"

#include <optional>

/// Ends programs that a person agreed to end. Every call may run tools: background work, or a terminal.
namespace swabby::Quitting {

enum class Force { no, yes };

/// Who the shown program is, to be told later whether it still is. No value when it has ended, when another
/// program has its id by now, when only now the session is known to stand on it, and for what is never ended:
/// the system's first process and Swabby itself.
std::optional<ProcessIdentity> identify(const ProcessSample &shown, Machine &machine);

/// Asks an application to quit, sends any other program and one that refuses the signal to terminate; by
/// force it is killed. False, and nothing happened, when it is no longer that process or the system refuses.
bool quit(const ProcessIdentity &process, Force force, Machine &machine);

} // namespace swabby::Quitting
