#pragma once

#include "platform/Notifier.h"

#include <memory>
#include <string>

namespace swabby {

/// Notifications by org.freedesktop.Notifications on the session bus, not by the tray: those that wait go out
/// one after the other, and none replaces another. Without a bus or a server they are dropped. The connection
/// is made with the first one. What was posted just before the program's end is still waited for, a second at
/// most.
class LinuxNotifier final : public Notifier {
public:
    /// The session bus's address; may be empty.
    explicit LinuxNotifier(std::string busAddress);
    ~LinuxNotifier() override;

    void post(const Notification &notification, std::function<void()> opened) override;

private:
    class Connection;

    const std::string m_busAddress;
    std::unique_ptr<Connection> m_connection;
};

} // namespace swabby
