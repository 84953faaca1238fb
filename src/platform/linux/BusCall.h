#pragma once

#include "platform/StopToken.h"

#include <systemd/sd-bus.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace swabby {

using Steady = std::chrono::steady_clock;
struct LetGo {
    void operator()(sd_bus *bus) const { sd_bus_close_unref(bus); }
    void operator()(sd_bus_message *message) const { sd_bus_message_unref(message); }
};
using Bus = std::unique_ptr<sd_bus, LetGo>;
using BusMessage = std::unique_ptr<sd_bus_message, LetGo>;

/// Begins a connection to a message bus, its address as in DBUS_SESSION_BUS_ADDRESS. Null when there is no
/// such bus. Does not wait for it to answer.
Bus beginBus(const std::string &address);

/// Waits for such a bus to introduce itself, which the library itself would do for good. False when that
/// takes longer.
bool becomesReady(sd_bus *bus, Steady::time_point end, const StopToken &stop);

/// Begins one and waits until it can be used; null when that takes longer.
Bus connectBus(const std::string &address, Steady::time_point end, const StopToken &stop);

/// A question to a service; a service that does not run is started for it only when that is said.
enum class ServiceStart { never, whenNeeded };
BusMessage busQuestion(sd_bus *bus, const char *service, const char *path, const char *interface,
                       const char *member, ServiceStart start);

/// The answer; null when the bus or the service refuses, or the time is up.
BusMessage busAnswer(sd_bus *bus, BusMessage question, Steady::time_point end);

} // namespace swabby
