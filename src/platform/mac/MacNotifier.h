#pragma once

#include "platform/Notifier.h"
#include "platform/Permissions.h"

#include <memory>

namespace swabby {

/// Notifications of the system's notification centre. The system takes them from an application bundle only:
/// a program outside one posts nothing.
class MacNotifier final : public Notifier {
public:
    /// What people answer is noted.
    explicit MacNotifier(Permissions &permissions);

    void requestPermission() override;
    void post(const Notification &notification, std::function<void()> opened) override;

private:
    class Centre;
    std::shared_ptr<Centre> m_centre; ///< null outside a bundle
};

} // namespace swabby
