#include "platform/linux/UnitStates.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <memory>
#include <poll.h>

namespace swabby {

namespace {

using Steady = std::chrono::steady_clock;

constexpr auto manager = "org.freedesktop.systemd1";

using Bus = std::unique_ptr<sd_bus, decltype([](sd_bus *bus) { sd_bus_close_unref(bus); })>;
using Message =
    std::unique_ptr<sd_bus_message, decltype([](sd_bus_message *message) { sd_bus_message_unref(message); })>;

std::uint64_t microsecondsUntil(Steady::time_point end)
{
    // Zero would stand for the library's own time limit, which is 25 seconds.
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(end - Steady::now()).count();
    return static_cast<std::uint64_t>(std::max<std::int64_t>(left, 1));
}

/// Waits for the bus to introduce itself; the library itself would wait for good.
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

Bus connect(const std::string &address, Steady::time_point end, const StopToken &stop)
{
    sd_bus *made = nullptr;
    if (sd_bus_new(&made) < 0)
        return nullptr;
    Bus bus(made);
    if (sd_bus_set_address(made, address.c_str()) < 0 || sd_bus_set_bus_client(made, 1) < 0 ||
        sd_bus_start(made) < 0 || !becomesReady(made, end, stop))
        return nullptr;
    return bus;
}

/// The answer; none when the bus or the manager refuses, or the time is up.
Message answerTo(sd_bus *bus, Message question, Steady::time_point end)
{
    sd_bus_message *answer = nullptr;
    if (!question || sd_bus_call(bus, question.get(), microsecondsUntil(end), nullptr, &answer) < 0)
        return nullptr;
    return Message(answer);
}

Message questionTo(sd_bus *bus, const char *path, const char *interface, const char *member)
{
    sd_bus_message *question = nullptr;
    if (sd_bus_message_new_method_call(bus, &question, manager, path, interface, member) < 0)
        return nullptr;
    // A service manager that does not run is not started to be asked.
    sd_bus_message_set_auto_start(question, 0);
    return Message(question);
}

std::optional<std::int32_t> mainPid(sd_bus *bus, const char *unitPath, Steady::time_point end)
{
    Message question = questionTo(bus, unitPath, "org.freedesktop.DBus.Properties", "Get");
    if (!question ||
        sd_bus_message_append(question.get(), "ss", "org.freedesktop.systemd1.Service", "MainPID") < 0)
        return std::nullopt;
    const Message answer = answerTo(bus, std::move(question), end);
    std::uint32_t pid = 0;
    if (!answer || sd_bus_message_read(answer.get(), "v", "u", &pid) < 0 || pid == 0)
        return std::nullopt;
    return static_cast<std::int32_t>(pid);
}

Message listOf(sd_bus *bus, const std::vector<std::string> &units, Steady::time_point end)
{
    Message question =
        questionTo(bus, "/org/freedesktop/systemd1", "org.freedesktop.systemd1.Manager", "ListUnitsByNames");
    if (!question || sd_bus_message_open_container(question.get(), SD_BUS_TYPE_ARRAY, "s") < 0)
        return nullptr;
    for (const std::string &unit : units)
        if (sd_bus_message_append(question.get(), "s", unit.c_str()) < 0)
            return nullptr;
    sd_bus_message_close_container(question.get());
    return answerTo(bus, std::move(question), end);
}

} // namespace

std::unordered_map<std::string, UnitState> unitStates(const std::string &busAddress,
                                                      const std::vector<std::string> &units,
                                                      std::chrono::milliseconds limit, const StopToken &stop)
{
    std::unordered_map<std::string, UnitState> states;
    const auto end = Steady::now() + limit;
    const Bus bus = units.empty() ? nullptr : connect(busAddress, end, stop);
    const Message list = bus ? listOf(bus.get(), units, end) : nullptr;
    if (!list || sd_bus_message_enter_container(list.get(), SD_BUS_TYPE_ARRAY, "(ssssssouso)") < 0)
        return states;

    const char *name = nullptr;
    const char *loadState = nullptr;
    const char *activeState = nullptr;
    const char *path = nullptr;
    const char *skipped = nullptr;
    std::uint32_t job = 0;
    while (sd_bus_message_read(list.get(), "(ssssssouso)", &name, &skipped, &loadState, &activeState,
                               &skipped, &skipped, &path, &job, &skipped, &skipped) > 0) {
        if (std::string_view(loadState) != "loaded")
            continue;
        UnitState &state = states[name];
        const std::string_view active(activeState);
        state.isActive = active != "inactive" && active != "failed";
        if (state.isActive && std::string_view(name).ends_with(".service"))
            state.pid = mainPid(bus.get(), path, end);
    }
    return states;
}

} // namespace swabby
