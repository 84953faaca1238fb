#include "platform/linux/desktop/BusMenu.h"

#include <cerrno>
#include <iterator>
#include <string_view>

namespace swabby {
namespace {

constexpr auto menuInterface = "com.canonical.dbusmenu";
constexpr std::uint32_t revision = 1;
constexpr int root = 0; // the lines follow from 1 on
constexpr int lineCount = static_cast<int>(std::size(trayMenu));

const TrayMenuLine *lineOf(int id)
{
    return id > root && id <= lineCount ? &trayMenu[id - 1] : nullptr;
}

/// A line's one property worth telling, since everything else is as the protocol has it when nothing is said.
struct Property {
    const char *name;
    const char *value;
};

Property propertyOf(int id)
{
    const TrayMenuLine *line = lineOf(id);
    if (line == nullptr)
        return {"children-display", "submenu"};
    return line->command ? Property{"label", line->text} : Property{"type", "separator"};
}

int appendProperties(sd_bus_message *reply, int id)
{
    const Property property = propertyOf(id);
    return sd_bus_message_append(reply, "a{sv}", 1, property.name, "s", property.value);
}

int appendLine(sd_bus_message *reply, int id)
{
    sd_bus_message_open_container(reply, 'v', "(ia{sv}av)");
    sd_bus_message_open_container(reply, 'r', "ia{sv}av");
    sd_bus_message_append(reply, "i", id);
    appendProperties(reply, id);
    sd_bus_message_append(reply, "av", 0);
    sd_bus_message_close_container(reply);
    return sd_bus_message_close_container(reply);
}

int refuse(sd_bus_message *call)
{
    return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_INVALID_ARGS, "there is no such line");
}

int send(sd_bus_message *reply)
{
    const int result = sd_bus_send(nullptr, reply, nullptr);
    sd_bus_message_unref(reply);
    return result;
}

int getLayout(sd_bus_message *call, void * /*menu*/, sd_bus_error * /*error*/)
{
    int parent = root;
    int depth = -1;
    if (sd_bus_message_read(call, "ii", &parent, &depth) <= 0 ||
        (parent != root && lineOf(parent) == nullptr))
        return refuse(call);
    sd_bus_message *reply = nullptr;
    if (const int failure = sd_bus_message_new_method_return(call, &reply); failure < 0)
        return failure;
    sd_bus_message_append(reply, "u", revision);
    sd_bus_message_open_container(reply, 'r', "ia{sv}av");
    sd_bus_message_append(reply, "i", parent);
    appendProperties(reply, parent);
    sd_bus_message_open_container(reply, 'a', "v");
    if (parent == root && depth != 0)
        for (int id = 1; id <= lineCount; ++id)
            appendLine(reply, id);
    sd_bus_message_close_container(reply);
    sd_bus_message_close_container(reply);
    return send(reply);
}

int getGroupProperties(sd_bus_message *call, void * /*menu*/, sd_bus_error * /*error*/)
{
    sd_bus_message *reply = nullptr;
    if (const int failure = sd_bus_message_new_method_return(call, &reply); failure < 0)
        return failure;
    sd_bus_message_open_container(reply, 'a', "(ia{sv})");
    const auto append = [reply](int id) {
        sd_bus_message_open_container(reply, 'r', "ia{sv}");
        sd_bus_message_append(reply, "i", id);
        appendProperties(reply, id);
        sd_bus_message_close_container(reply);
    };
    sd_bus_message_enter_container(call, 'a', "i");
    int id = root;
    bool asksForAll = true;
    for (; sd_bus_message_read(call, "i", &id) > 0; asksForAll = false)
        if (id == root || lineOf(id) != nullptr)
            append(id);
    for (id = root; asksForAll && id <= lineCount; ++id)
        append(id);
    sd_bus_message_close_container(reply);
    return send(reply);
}

int getProperty(sd_bus_message *call, void * /*menu*/, sd_bus_error * /*error*/)
{
    int id = root;
    const char *name = nullptr;
    if (sd_bus_message_read(call, "is", &id, &name) <= 0 || (id != root && lineOf(id) == nullptr) ||
        propertyOf(id).name != std::string_view(name))
        return refuse(call);
    return sd_bus_reply_method_return(call, "v", "s", propertyOf(id).value);
}

int event(sd_bus_message *call, void *menu, sd_bus_error * /*error*/)
{
    int id = root;
    const char *name = nullptr;
    if (sd_bus_message_read(call, "is", &id, &name) <= 0 || !static_cast<BusMenu *>(menu)->follow(id, name))
        return refuse(call);
    return sd_bus_reply_method_return(call, "");
}

int eventGroup(sd_bus_message *call, void *menu, sd_bus_error * /*error*/)
{
    std::vector<int> unknown;
    sd_bus_message_enter_container(call, 'a', "(isvu)");
    while (sd_bus_message_enter_container(call, 'r', "isvu") > 0) {
        int id = root;
        const char *name = nullptr;
        if (sd_bus_message_read(call, "is", &id, &name) > 0 &&
            !static_cast<BusMenu *>(menu)->follow(id, name))
            unknown.push_back(id);
        sd_bus_message_skip(call, "vu");
        sd_bus_message_exit_container(call);
    }
    sd_bus_message *reply = nullptr;
    if (const int failure = sd_bus_message_new_method_return(call, &reply); failure < 0)
        return failure;
    sd_bus_message_append_array(reply, 'i', unknown.data(), unknown.size() * sizeof(int));
    return send(reply);
}

int aboutToShow(sd_bus_message *call, void * /*menu*/, sd_bus_error * /*error*/)
{
    constexpr int needsNoUpdate = 0;
    return sd_bus_reply_method_return(call, "b", needsNoUpdate);
}

int aboutToShowGroup(sd_bus_message *call, void * /*menu*/, sd_bus_error * /*error*/)
{
    return sd_bus_reply_method_return(call, "aiai", 0, 0);
}

int readVersion(sd_bus * /*bus*/, const char * /*path*/, const char * /*interface*/, const char * /*name*/,
                sd_bus_message *reply, void * /*menu*/, sd_bus_error * /*error*/)
{
    return sd_bus_message_append(reply, "u", 3);
}

int readText(sd_bus * /*bus*/, const char * /*path*/, const char * /*interface*/, const char *name,
             sd_bus_message *reply, void * /*menu*/, sd_bus_error * /*error*/)
{
    return sd_bus_message_append(reply, "s", std::string_view(name) == "TextDirection" ? "ltr" : "normal");
}

int readNoPaths(sd_bus * /*bus*/, const char * /*path*/, const char * /*interface*/, const char * /*name*/,
                sd_bus_message *reply, void * /*menu*/, sd_bus_error * /*error*/)
{
    return sd_bus_message_append(reply, "as", 0);
}

const sd_bus_vtable members[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Version", "u", readVersion, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("TextDirection", "s", readText, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Status", "s", readText, 0, 0),
    SD_BUS_PROPERTY("IconThemePath", "as", readNoPaths, 0, 0),
    SD_BUS_METHOD("GetLayout", "iias", "u(ia{sv}av)", getLayout, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("GetGroupProperties", "aias", "a(ia{sv})", getGroupProperties, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("GetProperty", "is", "v", getProperty, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Event", "isvu", "", event, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("EventGroup", "a(isvu)", "ai", eventGroup, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("AboutToShow", "i", "b", aboutToShow, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("AboutToShowGroup", "ai", "aiai", aboutToShowGroup, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("ItemsPropertiesUpdated", "a(ia{sv})a(ias)", 0),
    SD_BUS_SIGNAL("LayoutUpdated", "ui", 0),
    SD_BUS_SIGNAL("ItemActivationRequested", "iu", 0),
    SD_BUS_VTABLE_END};

} // namespace

BusMenu::BusMenu(sd_bus *bus, std::function<void(TrayCommand)> chosen) : m_chosen(std::move(chosen))
{
    sd_bus_slot *slot = nullptr;
    if (sd_bus_add_object_vtable(bus, &slot, path, menuInterface, members, this) >= 0)
        m_slot.reset(slot);
}

bool BusMenu::follow(int line, const char *event) const
{
    const TrayMenuLine *known = lineOf(line);
    if (known != nullptr && known->command && std::string_view(event) == "clicked")
        m_chosen(*known->command);
    return known != nullptr || line == root;
}

} // namespace swabby
