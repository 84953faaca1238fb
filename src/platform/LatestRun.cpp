#include "platform/LatestRun.h"

#include <QtCore/QTimer>

#include <chrono>
#include <mutex>
#include <utility>

namespace swabby {
namespace {

using namespace std::chrono_literals;

/// Faster than that nobody reads.
constexpr auto interval = 100ms;

} // namespace

/// Between the working threads and the run's own.
struct LatestRun::Relay {
    std::function<void(const ScanProgress &)> hear;
    std::mutex guard;
    QObject *listener = nullptr; ///< null once the run is over
    ScanProgress latest;
    bool isUnderWay = false; ///< to the listener

    void deliver()
    {
        std::unique_lock lock(guard);
        isUnderWay = false;
        const ScanProgress now = latest;
        lock.unlock();
        hear(now);
    }
};

ScanControl LatestRun::begin(std::function<void(const ScanProgress &)> hear)
{
    end();
    ScanControl control = {.stop = join(), .progress = {}};
    if (!hear)
        return control;
    m_relay = std::make_shared<Relay>();
    m_relay->hear = std::move(hear);
    m_relay->listener = listener();
    control.progress = [relay = m_relay](const ScanProgress &now) {
        const std::lock_guard lock(relay->guard);
        relay->latest = now;
        if (relay->listener == nullptr || std::exchange(relay->isUnderWay, true))
            return;
        QMetaObject::invokeMethod(
            relay->listener,
            [relay] { QTimer::singleShot(interval, relay->listener, [relay] { relay->deliver(); }); },
            Qt::QueuedConnection);
    };
    return control;
}

StopToken LatestRun::join()
{
    return (m_stop ? *m_stop : m_stop.emplace()).token();
}

void LatestRun::end()
{
    if (m_stop)
        m_stop->requestStop();
    m_stop.reset();
    if (m_relay) {
        const std::lock_guard lock(m_relay->guard);
        m_relay->listener = nullptr;
    }
    m_relay.reset();
    m_listener.reset();
}

QObject *LatestRun::listener()
{
    if (!m_listener)
        m_listener = std::make_unique<QObject>();
    return m_listener.get();
}

} // namespace swabby
