#pragma once

#include "platform/linux/BusCall.h"

#include <QtCore/QSocketNotifier>
#include <QtCore/QTimer>

#include <functional>
#include <memory>

namespace swabby {

/// A bus connection that lives in the event loop of the thread that made it: nothing here waits.
class BusLoop {
public:
    /// What is told of a signal, or of an answer: null when the call was refused or took too long.
    using Listener = std::function<void(sd_bus_message *)>;

    /// The listener hears every signal of listen().
    BusLoop(Bus bus, Listener listener);
    ~BusLoop();
    BusLoop(const BusLoop &) = delete;
    BusLoop &operator=(const BusLoop &) = delete;

    sd_bus *bus() const { return m_bus.get(); }
    /// False once the bus has hung up.
    bool isAlive() const { return m_isAlive; }

    void listen(const char *sender, const char *path, const char *interface, const char *member);
    /// The listener hears when that name on the bus gets another owner, or none.
    void listenForOwner(const std::string &name);
    /// Sends what nobody answers to. Null is not sent.
    void send(BusMessage message);
    /// Sends a question; answered is called once, later. A null question is answered with null at once.
    void call(BusMessage question, std::chrono::milliseconds patience, Listener answered);
    /// Goes on without the event loop until the condition holds, at most for that time.
    void processFor(std::chrono::milliseconds time, const std::function<bool()> &condition);

private:
    void process();
    void watch();
    void end();

    Bus m_bus;
    Listener m_listener;
    bool m_isAlive = true;
    std::unique_ptr<QSocketNotifier> m_readable;
    std::unique_ptr<QSocketNotifier> m_writable;
    QTimer m_timer; ///< for calls that take too long
};

} // namespace swabby
