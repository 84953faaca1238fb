#include "platform/linux/desktop/StatusNotifierObject.h"

#include "platform/linux/desktop/BusMenu.h"

#include <QtCore/QtEndian>

#include <string_view>

namespace swabby {
namespace {

/// The sizes that panels ask for; they take the nearest.
constexpr int sides[] = {16, 22, 24, 32, 48, 64};

struct PlainProperty {
    const char *name;
    const char *value;
};

// A name of an icon would win over its pixels.
constexpr PlainProperty plainProperties[] = {{"Category", "ApplicationStatus"},
                                             {"Id", "com.swabby.app"},
                                             {"Title", "Swabby"},
                                             {"Status", "Active"},
                                             {"IconName", ""},
                                             {"IconThemePath", ""},
                                             {"OverlayIconName", ""},
                                             {"AttentionIconName", ""},
                                             {"AttentionMovieName", ""}};

StatusNotifierObject &self(void *object)
{
    return *static_cast<StatusNotifierObject *>(object);
}

int readPlain(sd_bus * /*bus*/, const char * /*path*/, const char * /*interface*/, const char *name,
              sd_bus_message *reply, void * /*object*/, sd_bus_error * /*error*/)
{
    for (const PlainProperty &property : plainProperties)
        if (std::string_view(property.name) == name)
            return sd_bus_message_append(reply, "s", property.value);
    return sd_bus_message_append(reply, "s", "");
}

int readMenu(sd_bus * /*bus*/, const char * /*path*/, const char * /*interface*/, const char * /*name*/,
             sd_bus_message *reply, void * /*object*/, sd_bus_error * /*error*/)
{
    return sd_bus_message_append(reply, "o", BusMenu::path);
}

int readNo(sd_bus * /*bus*/, const char * /*path*/, const char * /*interface*/, const char * /*name*/,
           sd_bus_message *reply, void * /*object*/, sd_bus_error * /*error*/)
{
    return sd_bus_message_append(reply, "b", 0);
}

int readNoWindow(sd_bus * /*bus*/, const char * /*path*/, const char * /*interface*/, const char * /*name*/,
                 sd_bus_message *reply, void * /*object*/, sd_bus_error * /*error*/)
{
    return sd_bus_message_append(reply, "i", 0);
}

// Each pixel goes as alpha, red, green, blue, whatever this processor's order is.
int appendPixels(sd_bus_message *reply, QImage image)
{
    image = std::move(image).convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<quint32 *>(image.scanLine(y));
        qToBigEndian<quint32>(line, image.width(), line);
    }
    sd_bus_message_open_container(reply, 'r', "iiay");
    sd_bus_message_append(reply, "ii", image.width(), image.height());
    sd_bus_message_append_array(reply, 'y', image.constBits(), static_cast<std::size_t>(image.sizeInBytes()));
    return sd_bus_message_close_container(reply);
}

int readPixels(sd_bus * /*bus*/, const char * /*path*/, const char * /*interface*/, const char *name,
               sd_bus_message *reply, void *object, sd_bus_error * /*error*/)
{
    const auto &draw = self(object).picture().draw;
    sd_bus_message_open_container(reply, 'a', "(iiay)");
    if (draw && std::string_view(name) == "IconPixmap")
        for (const int side : sides)
            appendPixels(reply, draw(side));
    return sd_bus_message_close_container(reply);
}

int readTip(sd_bus * /*bus*/, const char * /*path*/, const char * /*interface*/, const char * /*name*/,
            sd_bus_message *reply, void *object, sd_bus_error * /*error*/)
{
    const QByteArray tip = self(object).picture().tip.toUtf8();
    return sd_bus_message_append(reply, "(sa(iiay)ss)", "", 0, "Swabby", tip.constData());
}

// Panels that do not know where they are say 0, 0.
QRect placeIn(sd_bus_message *call)
{
    int x = 0;
    int y = 0;
    if (sd_bus_message_read(call, "ii", &x, &y) <= 0 || (x == 0 && y == 0))
        return {};
    return {x, y, 1, 1};
}

int activate(sd_bus_message *call, void *object, sd_bus_error * /*error*/)
{
    self(object).clicks().activated(placeIn(call));
    return sd_bus_reply_method_return(call, "");
}

int wantMenu(sd_bus_message *call, void *object, sd_bus_error * /*error*/)
{
    self(object).clicks().menuWanted(placeIn(call));
    return sd_bus_reply_method_return(call, "");
}

int takeNote(sd_bus_message *call, void * /*object*/, sd_bus_error * /*error*/)
{
    return sd_bus_reply_method_return(call, "");
}

const sd_bus_vtable members[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_PROPERTY("Category", "s", readPlain, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Id", "s", readPlain, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Title", "s", readPlain, 0, 0),
    SD_BUS_PROPERTY("Status", "s", readPlain, 0, 0),
    SD_BUS_PROPERTY("WindowId", "i", readNoWindow, 0, 0),
    SD_BUS_PROPERTY("IconThemePath", "s", readPlain, 0, 0),
    SD_BUS_PROPERTY("Menu", "o", readMenu, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("ItemIsMenu", "b", readNo, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("IconName", "s", readPlain, 0, 0),
    SD_BUS_PROPERTY("IconPixmap", "a(iiay)", readPixels, 0, 0),
    SD_BUS_PROPERTY("OverlayIconName", "s", readPlain, 0, 0),
    SD_BUS_PROPERTY("OverlayIconPixmap", "a(iiay)", readPixels, 0, 0),
    SD_BUS_PROPERTY("AttentionIconName", "s", readPlain, 0, 0),
    SD_BUS_PROPERTY("AttentionIconPixmap", "a(iiay)", readPixels, 0, 0),
    SD_BUS_PROPERTY("AttentionMovieName", "s", readPlain, 0, 0),
    SD_BUS_PROPERTY("ToolTip", "(sa(iiay)ss)", readTip, 0, 0),
    SD_BUS_METHOD("Activate", "ii", "", activate, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("SecondaryActivate", "ii", "", activate, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("ContextMenu", "ii", "", wantMenu, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Scroll", "is", "", takeNote, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_SIGNAL("NewTitle", "", 0),
    SD_BUS_SIGNAL("NewIcon", "", 0),
    SD_BUS_SIGNAL("NewAttentionIcon", "", 0),
    SD_BUS_SIGNAL("NewOverlayIcon", "", 0),
    SD_BUS_SIGNAL("NewToolTip", "", 0),
    SD_BUS_SIGNAL("NewStatus", "s", 0),
    SD_BUS_VTABLE_END};

} // namespace

StatusNotifierObject::StatusNotifierObject(sd_bus *bus, Clicks clicks) : m_clicks(std::move(clicks))
{
    sd_bus_slot *slot = nullptr;
    if (sd_bus_add_object_vtable(bus, &slot, path, interface, members, this) >= 0)
        m_slot.reset(slot);
}

} // namespace swabby
