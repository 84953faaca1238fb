#pragma once

#include "platform/desktop/TrayMenu.h"
#include "platform/linux/desktop/StatusNotifierObject.h"

namespace swabby {

/// The item's menu as an object on the bus, for panels that show menus themselves. It never changes.
class BusMenu {
public:
    static constexpr auto path = "/StatusNotifierItem/Menu";

    /// Chosen is called for every line that is chosen.
    BusMenu(sd_bus *bus, std::function<void(TrayCommand)> chosen);

    /// Follows what a panel reports of a line; false when there is no such line.
    bool follow(int line, const char *event) const;

private:
    std::function<void(TrayCommand)> m_chosen;
    BusSlot m_slot;
};

} // namespace swabby
