#pragma once

#include "platform/desktop/TrayItem.h"
#include "platform/linux/BusLoop.h"
#include "platform/linux/desktop/BusMenu.h"
#include "platform/linux/desktop/StatusNotifierObject.h"

#include <QtCore/QTimer>

namespace swabby {

/// The item as a panel shows it that asks for it over the session's message bus.
class StatusNotifierItem : public TrayItem {
    Q_OBJECT

public:
    /// The bus's address as in DBUS_SESSION_BUS_ADDRESS. One that says nothing for that long counts as one
    /// without a panel, until it does.
    StatusNotifierItem(const std::string &busAddress, std::chrono::milliseconds patience);
    ~StatusNotifierItem() override;

    Place place() const override;
    void show(const TrayPicture &picture) override;
    void hide() override;

private:
    void follow(sd_bus_message *signal);
    void lookForPanel();
    void enter();
    void setPlace(Place place);
    void announce(const char *change);

    QTimer m_firstAnswer;
    Place m_place = Place::unknown;
    bool m_isWanted = false;
    bool m_hasEntered = false;
    std::unique_ptr<BusLoop> m_loop;
    // After the loop, whose connection they have to leave first.
    std::unique_ptr<StatusNotifierObject> m_object;
    std::unique_ptr<BusMenu> m_menu;
};

} // namespace swabby
