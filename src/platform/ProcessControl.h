#pragma once

#include "platform/StopToken.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace swabby {

/// Who a process is: an id alone is given to another program as soon as the first has ended.
struct ProcessIdentity {
    std::int32_t pid = 0;
    std::uint64_t started = 0; ///< in a unit of the machine's own; 0 when it does not tell

    bool operator==(const ProcessIdentity &) const = default;
};

enum class QuitSignal { terminate = 15, kill = 9 };

/// Ends processes. May run a tool: background work, or a terminal.
class ProcessControl {
public:
    virtual ~ProcessControl() = default;

    /// Who has this id now; no value when nobody has, or when it has ended and is only not yet forgotten.
    virtual std::optional<ProcessIdentity> identify(std::int32_t pid) = 0;
    /// Signals exactly this process. False when it has ended, the id is somebody else's by now, or the system
    /// refuses.
    virtual bool signal(const ProcessIdentity &process, QuitSignal signal) = 0;
    /// Whether it ends within that time, or before a stop. No value, at once, where nobody can tell.
    virtual std::optional<bool> endsWithin(std::chrono::milliseconds time, const ProcessIdentity &process,
                                           const StopToken &stop) = 0;
};

} // namespace swabby
