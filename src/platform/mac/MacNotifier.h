#pragma once

#include "platform/Notifier.h"

#include <memory>

namespace swabby {

/// Notifications of the system's notification centre. The system takes them from an application bundle only:
/// a program outside one posts nothing.
class MacNotifier final : public Notifier {
public:
    MacNotifier();
    ~MacNotifier() override;

    void requestPermission() override;
    void post(const Notification &notification, std::function<void()> opened) override;

private:
    class Centre;
    std::shared_ptr<Centre> m_centre; ///< null outside a bundle
};

} // namespace swabby
