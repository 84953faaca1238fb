#include "platform/linux/BusCall.h"

#include <algorithm>
#include <poll.h>

namespace swabby {
namespace {

std::uint64_t microsecondsUntil(Steady::time_point end)
{
    // Zero would stand for the library's own time limit, which is 25 seconds.
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(end - Steady::now()).count();
    return static_cast<std::uint64_t>(std::max<std::int64_t>(left, 1));
}

} // namespace

bool becomesReady(sd_bus *bus, Steady::time_point end, const StopToken &stop)
{
    while (Steady::now() < end && !stop.stopRequested()) {
        const int progress = sd_bus_process(bus, nullptr);
        if (progress < 0)
            return false;
        if (sd_bus_is_ready(bus) > 0)
            return true;
        if (progress > 0)
            continue;
        const int events = sd_bus_get_events(bus);
        pollfd watched[2] = {{sd_bus_get_fd(bus), static_cast<short>(events), 0},
                             {stop.descriptor(), POLLIN, 0}};
        if (events < 0 || ::poll(watched, 2, static_cast<int>(microsecondsUntil(end) / 1'000) + 1) < 0)
            return false;
    }
    return false;
}

Bus beginBus(const std::string &address)
{
    sd_bus *made = nullptr;
    if (address.empty() || sd_bus_new(&made) < 0)
        return nullptr;
    Bus bus(made);
    if (sd_bus_set_address(made, address.c_str()) < 0 || sd_bus_set_bus_client(made, 1) < 0 ||
        sd_bus_start(made) < 0)
        return nullptr;
    return bus;
}

Bus connectBus(const std::string &address, Steady::time_point end, const StopToken &stop)
{
    Bus bus = beginBus(address);
    return bus && becomesReady(bus.get(), end, stop) ? std::move(bus) : nullptr;
}

BusMessage busQuestion(sd_bus *bus, const char *service, const char *path, const char *interface,
                       const char *member, ServiceStart start)
{
    sd_bus_message *question = nullptr;
    if (sd_bus_message_new_method_call(bus, &question, service, path, interface, member) < 0)
        return nullptr;
    sd_bus_message_set_auto_start(question, start == ServiceStart::whenNeeded ? 1 : 0);
    return BusMessage(question);
}

BusMessage busAnswer(sd_bus *bus, BusMessage question, Steady::time_point end)
{
    sd_bus_message *answer = nullptr;
    if (!question || sd_bus_call(bus, question.get(), microsecondsUntil(end), nullptr, &answer) < 0)
        return nullptr;
    return BusMessage(answer);
}

} // namespace swabby
