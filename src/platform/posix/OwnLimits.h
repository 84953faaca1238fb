#pragma once

#include <chrono>

namespace swabby {

/// What a small program of Swabby's own may take for itself.
struct OwnLimits {
    std::chrono::milliseconds time; ///< whatever it waits for; its own children end with it
    std::chrono::seconds processorTime;
    unsigned long long memoryBytes = 0; ///< of addresses
};

/// From here on the process ends when it takes more. For a process that leads its group.
void limitOwnProcess(const OwnLimits &limits);

} // namespace swabby
