#pragma once

#include "StandIn.h"
#include "platform/linux/KernelFile.h"

#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtTest/QTest>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <thread>

namespace swabby {

/// A bus of its own, without any service that could be started.
class PrivateBus {
public:
    PrivateBus()
    {
        const QString program = QStandardPaths::findExecutable(u"dbus-daemon"_qs);
        if (program.isEmpty())
            return;
        m_folder.write("bus.conf",
                       "<busconfig><type>session</type><listen>unix:path=" + m_folder.path("bus") +
                           "</listen><policy context='default'><allow send_destination='*'/>"
                           "<allow own='*'/><allow eavesdrop='true'/></policy></busconfig>");
        m_daemon.start(program, {u"--nofork"_qs, u"--print-address"_qs,
                                 u"--config-file="_qs + QString::fromStdString(m_folder.path("bus.conf"))});
        if (m_daemon.waitForReadyRead(10'000))
            address = m_daemon.readLine().trimmed().toStdString();
    }
    ~PrivateBus()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    std::int32_t processId() const { return static_cast<std::int32_t>(m_daemon.processId()); }

    std::string address; ///< empty when there is no bus on this machine

private:
    StandIn m_folder;
    QProcess m_daemon;
};

/// A bus that accepts and then does what a table says: answers with some bytes, then waits or hangs up.
class RudeBus {
public:
    RudeBus(const std::string &answer, bool hangsUp) : m_listener(::socket(AF_UNIX, SOCK_STREAM, 0))
    {
        sockaddr_un place = {};
        place.sun_family = AF_UNIX;
        m_folder.path("bus").copy(place.sun_path, sizeof place.sun_path - 1);
        QVERIFY(::bind(m_listener.number(), reinterpret_cast<sockaddr *>(&place), sizeof place) == 0);
        QVERIFY(::listen(m_listener.number(), 1) == 0);
        m_thread = std::thread([this, answer, hangsUp] {
            Descriptor peer(::accept(m_listener.number(), nullptr, nullptr));
            if (::send(peer.number(), answer.data(), answer.size(), MSG_NOSIGNAL) < 0 || hangsUp)
                return;
            char ignored = 0;
            while (::recv(peer.number(), &ignored, 1, 0) > 0)
                continue;
        });
    }
    ~RudeBus()
    {
        ::shutdown(m_listener.number(), SHUT_RDWR);
        m_thread.join();
    }
    std::string address() const { return "unix:path=" + m_folder.path("bus"); }

private:
    StandIn m_folder;
    Descriptor m_listener;
    std::thread m_thread;
};

} // namespace swabby
