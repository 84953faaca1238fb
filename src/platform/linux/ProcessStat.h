#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace swabby {

/// What one line of /proc/PID/stat says, as far as Swabby uses it. Points into the line.
struct ProcessStat {
    std::string_view command; ///< the short name, any bytes at all
    std::int32_t parentPid = 0;
    std::int32_t threads = 0;
    bool isKernelThread = false;
    bool isForked = false;        ///< goes on with the program of the process that made it
    bool hasEnded = false;        ///< only its parent has not taken note of it yet
    std::uint64_t runTicks = 0;   ///< time on a processor, in the program and in the kernel for it
    std::uint64_t startTicks = 0; ///< since boot
    std::uint64_t residentPages = 0;
    std::uint64_t programStamp = 0; ///< differs after the process has become another program
};

/// No value for a line that ends too early or is no such line. Never blocks.
std::optional<ProcessStat> processStatFrom(std::string_view line);

/// Ticks in the kernel's files are counted in this unit.
double ticksPerSecond();

} // namespace swabby
