#pragma once

#include "platform/desktop/TrayItem.h"

#include <systemd/sd-bus.h>

namespace swabby {

struct LeaveBus {
    void operator()(sd_bus_slot *slot) const { sd_bus_slot_unref(slot); }
};
using BusSlot = std::unique_ptr<sd_bus_slot, LeaveBus>;

/// The item as an object on the bus: what a panel reads of it, and where it tells of clicks.
class StatusNotifierObject {
public:
    static constexpr auto path = "/StatusNotifierItem";
    static constexpr auto interface = "org.kde.StatusNotifierItem";

    struct Clicks {
        std::function<void(const QRect &where)> activated = {};
        std::function<void(const QRect &where)> menuWanted = {};
    };

    StatusNotifierObject(sd_bus *bus, Clicks clicks);

    const TrayPicture &picture() const { return m_picture; }
    /// What is read from now on; telling the panel of it is the owner's part.
    void setPicture(const TrayPicture &picture) { m_picture = picture; }
    const Clicks &clicks() const { return m_clicks; }

private:
    TrayPicture m_picture;
    Clicks m_clicks;
    BusSlot m_slot;
};

} // namespace swabby
