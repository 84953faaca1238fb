#pragma once

#include "platform/StopToken.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace swabby {

/// What the service manager knows of one unit.
struct UnitState {
    bool isActive = false;           ///< running, waiting for its time, or being started or stopped
    std::optional<std::int32_t> pid; ///< of a service's main process
};

/// Asks the service manager on a message bus (the system's, or the session's for the user's own manager)
/// about units. Units it does not know are missing, and without a bus or a manager all are. The bus
/// addresses are as in DBUS_SYSTEM_BUS_ADDRESS. Blocks for at most the given time.
std::unordered_map<std::string, UnitState> unitStates(const std::string &busAddress,
                                                      const std::vector<std::string> &units,
                                                      std::chrono::milliseconds limit, const StopToken &stop);

enum class UnitChange { start, stop };

/// Has the service manager start or stop a unit; whether it does is not told. Blocks for at most the given
/// time.
void changeUnit(const std::string &busAddress, UnitChange change, const std::string &unit,
                std::chrono::milliseconds limit, const StopToken &stop);

} // namespace swabby
