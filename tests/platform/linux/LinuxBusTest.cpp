#include "PrivateBus.h"
#include "StandIn.h"
#include "platform/linux/UnitStates.h"

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
    QString name, description, loadState, activeState, subState, followed;
    QDBusObjectPath path;
};

QDBusArgument &operator<<(QDBusArgument &argument, const UnitRow &row)
{
    argument.beginStructure();
    argument << row.name << row.description << row.loadState << row.activeState << row.subState
             << row.followed << row.path << uint{0} << QString() << QDBusObjectPath(u"/"_qs);
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
        const QString path = u"/org/freedesktop/systemd1/unit/"_qs;
        if (message.member() == u"ListUnitsByNames") {
            QList<UnitRow> rows;
            for (const QString &name : message.arguments().value(0).toStringList()) {
                const QString state = name.section(u'.', 0, 0);
                rows += UnitRow{name,
                                QString::fromUtf8("Ein Dienst für alles"),
                                state == u"unknown" ? u"not-found"_qs : u"loaded"_qs,
                                state,
                                u"x"_qs,
                                QString(),
                                QDBusObjectPath(path + state)};
            }
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
    void statesFromARealBus();
    void rudeBuses_data();
    void rudeBuses();
    void addressesNobodyListensAt_data();
    void addressesNobodyListensAt();
    void stopEndsTheConversation();

private:
    bool startManager();
    std::unordered_map<std::string, UnitState> ask(const std::vector<std::string> &units);

    PrivateBus m_bus;
    StandInManager m_manager;
};

bool LinuxBusTest::startManager()
{
    qDBusRegisterMetaType<UnitRow>();
    qDBusRegisterMetaType<QList<UnitRow>>();
    QDBusConnection connection =
        QDBusConnection::connectToBus(QString::fromStdString(m_bus.address), u"manager"_qs);
    return connection.registerVirtualObject(u"/org/freedesktop/systemd1"_qs, &m_manager,
                                            QDBusConnection::SubPath) &&
           connection.registerService(u"org.freedesktop.systemd1"_qs);
}

std::unordered_map<std::string, UnitState> LinuxBusTest::ask(const std::vector<std::string> &units)
{
    // The manager answers from this thread's event loop.
    auto answer = std::async(std::launch::async, [&] {
        return unitStates("unix:path=/nowhere;" + m_bus.address, units, 10s, {});
    });
    while (answer.wait_for(0s) != std::future_status::ready)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return answer.get();
}

void LinuxBusTest::statesFromARealBus()
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

void LinuxBusTest::rudeBuses_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<bool>("hangsUp");
    const QByteArray accepts = "OK 0123\r\n";
    QTest::newRow("silent") << QByteArray() << false;
    QTest::newRow("hangs up") << QByteArray() << true;
    QTest::newRow("refuses") << QByteArray("REJECTED EXTERNAL\r\n") << false;
    QTest::newRow("talks without end") << QByteArray(5000, 'x') << false;
    QTest::newRow("silent after accepting") << accepts << false;
    QTest::newRow("hangs up after accepting") << accepts << true;
    QTest::newRow("another byte order") << accepts + "B\2\1\1" + QByteArray(12, 0) << false;
    QTest::newRow("endless message") << accepts + QByteArray("l\2\1\1\xff\xff\xff\x7f\0\0\0\0\0\0\0\0", 16)
                                     << false;
    QTest::newRow("garbage") << accepts + QByteArray(64, 'l') << false;
}

void LinuxBusTest::rudeBuses()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const bool, hangsUp);
    const RudeBus bus(answer.toStdString(), hangsUp);
    QVERIFY(unitStates(bus.address(), {"a.service"}, 100ms, {}).empty());
}

void LinuxBusTest::addressesNobodyListensAt_data()
{
    QTest::addColumn<QByteArray>("address");
    for (const char *address :
         {"", "unix:", "unix:path=", "unix:path=/nowhere/bus", "unix:abstract=swabby%20nobody",
          "tcp:host=localhost,port=1", "nonsense", ";;unix:guid=1,path=/nowhere%2"})
        QTest::newRow(address) << QByteArray(address);
    QTest::newRow("longer than a socket's name") << "unix:path=/" + QByteArray(300, 'x');
}

void LinuxBusTest::addressesNobodyListensAt()
{
    QFETCH(const QByteArray, address);
    QVERIFY(unitStates(address.toStdString(), {"a.service"}, 100ms, {}).empty());
}

void LinuxBusTest::stopEndsTheConversation()
{
    const RudeBus bus({}, false);
    StopSource stop;
    stop.requestStop();
    QVERIFY(unitStates(bus.address(), {"a.service"}, 1h, stop.token()).empty()); // or this test never ends
}

QTEST_GUILESS_MAIN(LinuxBusTest)
#include "LinuxBusTest.moc"
