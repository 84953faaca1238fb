#include "platform/linux/UnitStates.h"

#include "platform/linux/BusCall.h"

namespace swabby {

namespace {

constexpr auto manager = "org.freedesktop.systemd1";
constexpr auto managerPath = "/org/freedesktop/systemd1";
constexpr auto managerInterface = "org.freedesktop.systemd1.Manager";

// A service manager that does not run is not started to be asked.
BusMessage questionTo(sd_bus *bus, const char *path, const char *interface, const char *member)
{
    return busQuestion(bus, manager, path, interface, member, ServiceStart::never);
}

std::optional<std::int32_t> mainPid(sd_bus *bus, const char *unitPath, Steady::time_point end)
{
    BusMessage question = questionTo(bus, unitPath, "org.freedesktop.DBus.Properties", "Get");
    if (!question ||
        sd_bus_message_append(question.get(), "ss", "org.freedesktop.systemd1.Service", "MainPID") < 0)
        return std::nullopt;
    const BusMessage answer = busAnswer(bus, std::move(question), end);
    std::uint32_t pid = 0;
    if (!answer || sd_bus_message_read(answer.get(), "v", "u", &pid) < 0 || pid == 0)
        return std::nullopt;
    return static_cast<std::int32_t>(pid);
}

BusMessage listOf(sd_bus *bus, const std::vector<std::string> &units, Steady::time_point end)
{
    BusMessage question = questionTo(bus, managerPath, managerInterface, "ListUnitsByNames");
    if (!question || sd_bus_message_open_container(question.get(), SD_BUS_TYPE_ARRAY, "s") < 0)
        return nullptr;
    for (const std::string &unit : units)
        if (sd_bus_message_append(question.get(), "s", unit.c_str()) < 0)
            return nullptr;
    sd_bus_message_close_container(question.get());
    return busAnswer(bus, std::move(question), end);
}

} // namespace

std::unordered_map<std::string, UnitState> unitStates(const std::string &busAddress,
                                                      const std::vector<std::string> &units,
                                                      std::chrono::milliseconds limit, const StopToken &stop)
{
    std::unordered_map<std::string, UnitState> states;
    const auto end = Steady::now() + limit;
    const Bus bus = units.empty() ? nullptr : connectBus(busAddress, end, stop);
    const BusMessage list = bus ? listOf(bus.get(), units, end) : nullptr;
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

void changeUnit(const std::string &busAddress, UnitChange change, const std::string &unit,
                std::chrono::milliseconds limit, const StopToken &stop)
{
    const auto end = Steady::now() + limit;
    const Bus bus = connectBus(busAddress, end, stop);
    if (!bus)
        return;
    BusMessage question = questionTo(bus.get(), managerPath, managerInterface,
                                     change == UnitChange::start ? "StartUnit" : "StopUnit");
    if (question && sd_bus_message_append(question.get(), "ss", unit.c_str(), "replace") >= 0)
        busAnswer(bus.get(), std::move(question), end);
}

} // namespace swabby
