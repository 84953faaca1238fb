#pragma once

#include <chrono>
#include <memory>

namespace swabby {

/// Limits this program and all it forks: 256 MB of addresses, no file grows, no trace of a crash, no
/// descriptor beyond the three standard ones. False when the system refuses one.
bool confineProgram();

/// The system calls that a confined process keeps. To make it takes longer than to read a small picture, so
/// it is made once, before there are processes to confine.
using CallFilter = std::shared_ptr<void>;
/// Null when it cannot be made.
CallFilter makeCallFilter();

/// Takes from this process what reading a file's content never needs: after that processor time or those
/// whole seconds it ends, and it reaches no network, starts nothing, changes no file. False when the system
/// refuses one.
bool confineProcess(const CallFilter &filter, std::chrono::milliseconds processorTime,
                    std::chrono::seconds time);

} // namespace swabby
