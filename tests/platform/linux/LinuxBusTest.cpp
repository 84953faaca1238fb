#include "PrivateBus.h"
#include "StandIn.h"
#include "platform/linux/Session.h"
#include "platform/linux/UnitStates.h"
#include "platform/posix/LocalSocket.h"

#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusMetaType>
#include <QtDBus/QDBusVariant>
#include <QtDBus/QDBusVirtualObject>
#include <QtTest/QTest>

#include <future>

using namespace swabby;
using namespace std::chrono_literals;

namespace {

struct UnitRow {
    QString name, state;
};

const QString unitPath = u"/org/freedesktop/systemd1/unit/"_qs;

QDBusArgument &operator<<(QDBusArgument &argument, const UnitRow &row)
{
    argument.beginStructure();
    argument << row.name << QString::fromUtf8("Ein Dienst für alles")
             << (row.state == u"unknown" ? u"not-found"_qs : u"loaded"_qs) << row.state << u"x"_qs
             << QString() << QDBusObjectPath(unitPath + row.state) << uint{0} << QString()
             << QDBusObjectPath(u"/"_qs);
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, UnitRow &)
{
    return argument; // only ever sent
}

/// Answers as the service manager does.
class StandInManager : public QDBusVirtualObject {
public:
    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        if (message.member() == u"ListUnitsByNames") {
            QList<UnitRow> rows;
            for (const QString &name : message.arguments().value(0).toStringList())
                rows += UnitRow{name, name.section(u'.', 0, 0)};
            return connection.send(message.createReply(QVariant::fromValue(rows)));
        }
        if (message.member() == u"Get" && message.arguments().value(1) == u"MainPID"_qs) {
            const uint pid = message.path().endsWith(u"/active") ? 4711 : 0;
            return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(pid))));
        }
        return false;
    }
};

} // namespace

Q_DECLARE_METATYPE(UnitRow)

class LinuxBusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void statesFromARealBus()
    {
        if (m_bus.address.empty())
            QSKIP("no message bus on this machine");
        QVERIFY(ask({"active.service"}).empty()); // nobody is the manager yet
        QVERIFY(startManager());
        auto states = ask({"active.service", "inactive.service", "failed.service", "activating.service",
                           "unknown.service", "active.timer"});
        QCOMPARE(states.size(), std::size_t{5});
        QVERIFY(states["active.service"].isActive);
        QCOMPARE(states["active.service"].pid, 4711);
        QVERIFY(states["activating.service"].isActive && !states["activating.service"].pid);
        QVERIFY(states["active.timer"].isActive && !states["active.timer"].pid);
        QVERIFY(!states["inactive.service"].isActive && !states["failed.service"].isActive);

        // An answer that comes in many pieces.
        std::vector<std::string> many;
        many.reserve(2000);
        for (int index = 0; index < 2000; ++index)
            many.push_back("inactive.number" + std::to_string(index) + ".service");
        QCOMPARE(ask(many).size(), many.size());
    }

    void nobodyThere()
    {
        const std::string accepts = "OK 0123\r\n";
        const std::pair<std::string, bool> answers[] = {
            {"", false},
            {"", true},
            {"REJECTED EXTERNAL\r\n", false},
            {std::string(5000, 'x'), false},
            {accepts, false},
            {accepts, true},
            {accepts + "B\2\1\1" + std::string(12, '\0'), false},
            {accepts + std::string("l\2\1\1\xff\xff\xff\x7f\0\0\0\0\0\0\0\0", 16), false},
            {accepts + std::string(64, 'l'), false}};
        for (const auto &[answer, hangsUp] : answers) {
            const RudeBus bus(answer, hangsUp);
            QVERIFY2(unitStates(bus.address(), {"a.service"}, 100ms, {}).empty(), answer.c_str());
        }
        for (const std::string &address :
             {std::string(), std::string("unix:"), std::string("unix:path="),
              std::string("unix:path=/nowhere/bus"), std::string("unix:abstract=swabby%20nobody"),
              std::string("tcp:host=localhost,port=1"), std::string("nonsense"),
              std::string(";;unix:guid=1,path=/nowhere%2"), "unix:path=/" + std::string(300, 'x')})
            QVERIFY2(unitStates(address, {"a.service"}, 100ms, {}).empty(), address.c_str());
    }

    void whereTheSessionsServersListen()
    {
        qputenv("XDG_RUNTIME_DIR", "/run/me");
        // What the environment says of the display and the compositor.
        compareTable(fixture(u"linux/session_sockets.txt"_qs), [](const Cells &row) {
            qputenv("DISPLAY", row[0]);
            qputenv("WAYLAND_DISPLAY", row[1]);
            QStringList sockets;
            for (const std::string &socket : sessionFromEnvironment().servers.sockets)
                sockets += QString::fromStdString(socket).replace(QChar(), u'@');
            return sockets.takeFirst() == u"/run/me/systemd/private" ? sockets.join(u' ') : u"none"_qs;
        });
    }

    void whoHoldsTheSession()
    {
        const StandIn folder;
        const std::string hidden = '\0' + folder.path("hidden");
        const Descriptor listener = listenAt(folder.path("socket"));
        const auto holds = [&](std::int32_t pid, const SessionServers &servers) {
            return sessionHolders("/proc", ::getpid(), servers, {}).contains(pid);
        };
        const std::int32_t self = ::getpid();
        QVERIFY(holds(::getppid(), {}) && !holds(self, {}) && !holds(0, {}));
        QVERIFY(holds(self, {{hidden, folder.path("socket")}, {}}));
        QVERIFY(!holds(self, {{hidden, folder.path("nobody"), std::string(300, 'x'), {}}, {}}));
        const RudeBus silent({}, false);
        QVERIFY(holds(self, {{}, silent.address()}));
        if (m_bus.address.empty())
            QSKIP("no message bus on this machine");
        QVERIFY(holds(m_bus.processId(), {{}, m_bus.address}) && !holds(self, {{}, m_bus.address}));
        QDBusConnection panel =
            QDBusConnection::connectToBus(QString::fromStdString(m_bus.address), u"panel"_qs);
        QVERIFY(panel.registerService(u"org.kde.StatusNotifierWatcher"_qs));
        QVERIFY(holds(self, {{}, m_bus.address}));
    }

    void stopEndsTheConversation()
    {
        const RudeBus bus({}, false);
        StopSource stop;
        stop.requestStop();
        QVERIFY(
            unitStates(bus.address(), {"a.service"}, 1h, stop.token()).empty()); // or this test never ends
    }

private:
    bool startManager()
    {
        qDBusRegisterMetaType<UnitRow>();
        qDBusRegisterMetaType<QList<UnitRow>>();
        QDBusConnection connection =
            QDBusConnection::connectToBus(QString::fromStdString(m_bus.address), u"manager"_qs);
        return connection.registerVirtualObject(u"/org/freedesktop/systemd1"_qs, &m_manager,
                                                QDBusConnection::SubPath) &&
               connection.registerService(u"org.freedesktop.systemd1"_qs);
    }

    std::unordered_map<std::string, UnitState> ask(const std::vector<std::string> &units)
    {
        // The manager answers from this thread's event loop.
        auto answer = std::async(std::launch::async, [&] {
            return unitStates("unix:path=/nowhere;" + m_bus.address, units, 10s, {});
        });
        while (answer.wait_for(0s) != std::future_status::ready)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return answer.get();
    }

    PrivateBus m_bus;
    StandInManager m_manager;
};

QTEST_GUILESS_MAIN(LinuxBusTest)
#include "LinuxBusTest.moc"
