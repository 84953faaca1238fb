#pragma once

#include <QtCore/QString>

#include <functional>

namespace swabby {

/// What a person is told without having asked. Plain text.
struct Notification {
    QString title;
    QString body;

    bool operator==(const Notification &) const = default;
};

/// Puts notifications on the person's desktop. Main thread only; never blocks.
class Notifier {
public:
    virtual ~Notifier() = default;

    /// Asks the person whether Swabby may notify, on systems where that is asked; who has answered before is
    /// not asked again. The answer, as it stands today, comes in later among the machine's permissions.
    virtual void requestPermission() {}

    /// Shows the notification at once, replacing none; what the system refuses is dropped. When the person
    /// opens it, opened is called on the main thread, also minutes later.
    virtual void post(const Notification &notification, std::function<void()> opened) = 0;
};

} // namespace swabby
