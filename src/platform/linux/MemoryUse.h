#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace swabby {

/// How the memory of one process is held, in KiB.
struct MemoryUse {
    std::int32_t pid = 0;
    std::int32_t parentPid = 0;
    bool isForked = false;       ///< goes on with its parent's program and, where it changed nothing, memory
    std::uint64_t anonymous = 0; ///< its own, or still its parent's
    std::uint64_t file = 0;      ///< pages of programs and libraries
    std::uint64_t shared = 0;    ///< set up for several processes

    bool operator==(const MemoryUse &) const = default;
};

/// The counts of /proc/PID/status; who it is and what it descends from are left out. No value when they are
/// missing, as for the kernel's own threads.
std::optional<MemoryUse> memoryUseFrom(std::string_view statusText);

/// KiB that the processes of one program take together, an estimate of the sum of their proportional sizes:
/// those cost a millisecond or more for each process, and a sandboxed one shows its to nobody.
std::uint64_t memoryTogether(std::span<const MemoryUse> processes);

} // namespace swabby
