#include "flows/cleanup/ProgressRelay.h"

#include <QtCore/QTimer>

#include <chrono>
#include <memory>
#include <mutex>
#include <utility>

namespace swabby {
namespace {

using namespace std::chrono_literals;

/// Faster than that nobody reads.
constexpr auto interval = 100ms;

struct Relay {
    std::mutex guard;
    ScanProgress latest;
    bool isUnderWay = false; ///< to the context's thread
};

} // namespace

std::function<void(const ScanProgress &)> relayProgress(QObject *context,
                                                        std::function<void(const ScanProgress &)> hear)
{
    const auto relay = std::make_shared<Relay>();
    const auto deliver = [relay, hear = std::move(hear)] {
        ScanProgress latest;
        {
            const std::lock_guard lock(relay->guard);
            latest = relay->latest;
            relay->isUnderWay = false;
        }
        hear(latest);
    };
    return [context, relay, deliver](const ScanProgress &now) {
        {
            const std::lock_guard lock(relay->guard);
            relay->latest = now;
            if (std::exchange(relay->isUnderWay, true))
                return;
        }
        QMetaObject::invokeMethod(context,
                                  [context, deliver] { QTimer::singleShot(interval, context, deliver); });
    };
}

} // namespace swabby
