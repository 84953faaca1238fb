#pragma once

#include <chrono>

namespace swabby {

/// Limits this program and all it forks: 256 MB of addresses, no file grows, no trace of a crash, no
/// descriptor beyond the three standard ones. False when the system refuses one.
bool confineProgram();

/// Takes from this process what reading a file's content never needs: after that processor time or those
/// whole seconds it ends, and it reaches no network, starts nothing, changes no file. False when the system
/// refuses one.
bool confineProcess(std::chrono::milliseconds processorTime, std::chrono::seconds time);

} // namespace swabby
