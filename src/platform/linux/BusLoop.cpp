#include "platform/linux/BusLoop.h"

#include <QtCore/QObject>

#include <algorithm>
#include <poll.h>

namespace swabby {
namespace {

int hearSignal(sd_bus_message *message, void *listener, sd_bus_error * /*error*/)
{
    (*static_cast<BusLoop::Listener *>(listener))(message);
    return 0;
}

int hearAnswer(sd_bus_message *message, void *listener, sd_bus_error * /*error*/)
{
    const auto *answered = static_cast<BusLoop::Listener *>(listener);
    (*answered)(sd_bus_message_is_method_error(message, nullptr) > 0 ? nullptr : message);
    return 0;
}

} // namespace

BusLoop::BusLoop(Bus bus, Listener listener) : m_bus(std::move(bus)), m_listener(std::move(listener))
{
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { process(); });
    const int descriptor = sd_bus_get_fd(m_bus.get());
    m_readable = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    m_writable = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write);
    for (QSocketNotifier *side : {m_readable.get(), m_writable.get()})
        QObject::connect(side, &QSocketNotifier::activated, side, [this] { process(); });
    watch();
}

BusLoop::~BusLoop() = default;

void BusLoop::listen(const char *sender, const char *path, const char *interface, const char *member)
{
    sd_bus_match_signal_async(m_bus.get(), nullptr, sender, path, interface, member, hearSignal, nullptr,
                              &m_listener);
    watch();
}

void BusLoop::listenForOwner(const std::string &name)
{
    const std::string rule = "type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',"
                             "interface='org.freedesktop.DBus',member='NameOwnerChanged',arg0='" +
                             name + '\'';
    sd_bus_add_match_async(m_bus.get(), nullptr, rule.c_str(), hearSignal, nullptr, &m_listener);
    watch();
}

void BusLoop::send(BusMessage message)
{
    if (!m_isAlive || !message)
        return;
    sd_bus_send(m_bus.get(), message.get(), nullptr);
    watch();
}

void BusLoop::call(BusMessage question, std::chrono::milliseconds patience, Listener answered)
{
    auto listener = std::make_unique<Listener>(std::move(answered));
    sd_bus_slot *slot = nullptr;
    const auto microseconds =
        static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(patience).count());
    if (!m_isAlive || !question ||
        sd_bus_call_async(m_bus.get(), &slot, question.get(), hearAnswer, listener.get(), microseconds) < 0) {
        (*listener)(nullptr);
        return;
    }
    // The library lets go of the listener with the slot, answered or not.
    sd_bus_slot_set_destroy_callback(slot, [](void *given) { delete static_cast<Listener *>(given); });
    static_cast<void>(listener.release());
    sd_bus_slot_set_floating(slot, 1);
    sd_bus_slot_unref(slot);
    watch();
}

void BusLoop::processFor(std::chrono::milliseconds time, const std::function<bool()> &condition)
{
    const auto end = Steady::now() + time;
    while (m_isAlive && !condition() && Steady::now() < end) {
        pollfd watched = {sd_bus_get_fd(m_bus.get()), static_cast<short>(sd_bus_get_events(m_bus.get())), 0};
        constexpr int glanceMilliseconds = 20;
        ::poll(&watched, 1, glanceMilliseconds);
        process();
    }
}

void BusLoop::process()
{
    // A callback may end in here again by way of processFor(); the library allows no nesting.
    int progress = 1;
    while (m_isAlive && progress > 0)
        progress = sd_bus_process(m_bus.get(), nullptr);
    if (progress < 0 && progress != -EBUSY)
        end();
    else
        watch();
}

void BusLoop::watch()
{
    if (!m_isAlive)
        return;
    const int events = sd_bus_get_events(m_bus.get());
    m_readable->setEnabled((events & POLLIN) != 0);
    m_writable->setEnabled((events & POLLOUT) != 0);
    std::uint64_t due = 0;
    constexpr std::uint64_t never = UINT64_MAX;
    if (sd_bus_get_timeout(m_bus.get(), &due) < 0 || due == never) {
        m_timer.stop();
        return;
    }
    // The library's times are those of the steady clock.
    const auto wait = std::chrono::microseconds(due) -
                      std::chrono::duration_cast<std::chrono::microseconds>(Steady::now().time_since_epoch());
    m_timer.start(
        std::max(std::chrono::milliseconds(0),
                 std::chrono::duration_cast<std::chrono::milliseconds>(wait) + std::chrono::milliseconds(1)));
}

void BusLoop::end()
{
    m_isAlive = false;
    m_readable->setEnabled(false);
    m_writable->setEnabled(false);
    m_timer.stop();
}

} // namespace swabby
