#include "platform/linux/LinuxNotifier.h"
#include "PrivateBus.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QElapsedTimer>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVirtualObject>

using namespace swabby;
using namespace std::chrono_literals;

namespace {

const QString notifications = u"org.freedesktop.Notifications"_qs;
const QString place = u"/org/freedesktop/Notifications"_qs;

/// A server that can do what it is told, and keeps what it is asked to show.
class StandInServer : public QDBusVirtualObject {
public:
    explicit StandInServer(const std::string &address)
        : m_connection(QDBusConnection::connectToBus(QString::fromStdString(address), u"server"_qs))
    {
        m_connection.registerVirtualObject(place, this);
    }
    ~StandInServer() override
    {
        leave();
        QDBusConnection::disconnectFromBus(u"server"_qs);
    }

    bool come() { return m_connection.registerService(notifications); }
    void leave() { m_connection.unregisterService(notifications); }
    void tell(const QString &signal, uint id, const QVariant &detail)
    {
        QDBusMessage message = QDBusMessage::createSignal(place, notifications, signal);
        message << id << detail;
        m_connection.send(message);
    }
    /// Gives the next answer that it holds back.
    void answer() { m_connection.send(m_heldBack.takeFirst()); }

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        if (message.member() == u"GetCapabilities")
            return !isSilent && connection.send(message.createReply(abilities));
        if (message.member() != u"Notify")
            return false;
        shown.append(message.arguments());
        m_heldBack.append(message.createReply(static_cast<uint>(shown.size())));
        if (!holdsBack)
            answer();
        return true;
    }

    QStringList abilities;
    bool isSilent = false;
    bool holdsBack = false;
    QList<QVariantList> shown;

private:
    QDBusConnection m_connection;
    QList<QDBusMessage> m_heldBack;
};

constexpr int replaces = 1;
constexpr int title = 3;
constexpr int body = 4;
constexpr int actions = 5;
constexpr int timeout = 7;

} // namespace

class LinuxNotifierTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        if (m_bus.address.empty())
            QSKIP("no message bus on this machine");
    }

    void eachIsSeparateAndInOrder()
    {
        StandInServer server(m_bus.address);
        server.holdsBack = true;
        QVERIFY(server.come());
        LinuxNotifier notifier(m_bus.address);
        for (const QString &text : {u"one"_qs, u"two"_qs, u"two"_qs})
            notifier.post({text, u"Body"_qs}, {});
        for (qsizetype count = 1; count <= 3; ++count) {
            QVERIFY(waitUntil([&] { return server.shown.size() == count; }));
            server.answer();
        }
        QStringList titles;
        for (const QVariantList &arguments : std::as_const(server.shown)) {
            titles.append(arguments.at(title).toString());
            QCOMPARE(arguments.at(replaces).toUInt(), 0u);
            QCOMPARE(arguments.at(timeout).toInt(), -1);
        }
        QCOMPARE(titles, QStringList({u"one"_qs, u"two"_qs, u"two"_qs}));
    }

    void theNextOneWaitsForTheAnswer()
    {
        StandInServer server(m_bus.address);
        server.holdsBack = true;
        QVERIFY(server.come());
        LinuxNotifier notifier(m_bus.address);
        notifier.post({u"one"_qs, {}}, {});
        notifier.post({u"two"_qs, {}}, {});
        QVERIFY(waitUntil([&] { return !server.shown.isEmpty(); }));
        // Whatever is under way meanwhile has been heard once the bus has answered a question of its own.
        for (int turn = 0; turn < 20; ++turn)
            QCoreApplication::processEvents();
        QCOMPARE(server.shown.size(), 1);
        server.answer();
        QVERIFY(waitUntil([&] { return server.shown.size() == 2; }));
        server.answer();
    }

    void whatAServerCanDoIsAskedEachTime()
    {
        StandInServer server(m_bus.address);
        LinuxNotifier notifier(m_bus.address);
        const Notification hostile = {u"<b>T</b>"_qs, u"<b>Mill</b> & \"sons\""_qs};
        int opened = 0;
        notifier.post(hostile, [&] { opened += 100; }); // nobody is there: dropped, and forgotten
        QVERIFY(server.come());

        struct Row {
            QStringList abilities;
            QString body;
            QStringList actions;
        };
        const QString escaped = u"&lt;b&gt;Mill&lt;/b&gt; &amp; &quot;sons&quot;"_qs;
        for (const Row &row :
             {Row{{u"body"_qs}, hostile.body, {}}, Row{{u"body-markup"_qs}, escaped, {}},
              Row{{u"body-markup"_qs, u"actions"_qs}, escaped, {u"default"_qs, u"Open Swabby"_qs}},
              Row{{u"actions"_qs}, hostile.body, {u"default"_qs, u"Open Swabby"_qs}}}) {
            server.abilities = row.abilities;
            const qsizetype before = server.shown.size();
            notifier.post(hostile, [&] { ++opened; });
            QVERIFY(waitUntil([&] {
                return server.shown.size() > before &&
                       server.shown.last().at(actions).toStringList() == row.actions;
            }));
            QCOMPARE(server.shown.last().at(title).toString(), hostile.title);
            QCOMPARE(server.shown.last().at(body).toString(), row.body);
        }
        const auto last = static_cast<uint>(server.shown.size());
        server.tell(u"ActionInvoked"_qs, last + 7, u"default"_qs); // somebody else's
        server.tell(u"ActionInvoked"_qs, last, u"default"_qs);
        QVERIFY(waitUntil([&] { return opened > 0; }));
        QCOMPARE(opened, 1);
        server.tell(u"NotificationClosed"_qs, last, 2u);
        server.tell(u"ActionInvoked"_qs, last, u"default"_qs); // closed by now
        server.tell(u"ActionInvoked"_qs, last - 1, u"default"_qs);
        QVERIFY(waitUntil([&] { return opened > 1; }));
        QCOMPARE(opened, 2);
    }

    void nobodyIsWaitedFor()
    {
        const RudeBus hangsUp("", true), neverAccepts("", false);
        StandInServer neverAnswers(m_bus.address);
        neverAnswers.isSilent = true;
        QVERIFY(neverAnswers.come());
        for (const std::string &address : {std::string(), std::string("unix:path=/nowhere/bus"),
                                           hangsUp.address(), neverAccepts.address(), m_bus.address}) {
            constexpr int unbearable = 5'000;
            QElapsedTimer clock;
            clock.start();
            {
                LinuxNotifier notifier(address);
                for (int count = 0; count < 3; ++count) {
                    notifier.post({u"T"_qs, u"B"_qs}, {});
                    QCoreApplication::processEvents();
                }
            }
            QVERIFY2(clock.elapsed() < unbearable, address.c_str());
        }
    }

    void aBusThatHangsUpIsLeftForANewOne()
    {
        const StandIn folder;
        const auto lead = [&](const PrivateBus &bus) {
            const QString place = QString::fromStdString(bus.address).section(u'=', 1).section(u',', 0, 0);
            folder.link("bus", place.toStdString());
        };
        auto first = std::make_unique<PrivateBus>();
        lead(*first);
        auto server = std::make_unique<StandInServer>(first->address);
        QVERIFY(server->come());
        LinuxNotifier notifier("unix:path=" + folder.path("bus"));
        notifier.post({u"one"_qs, {}}, {});
        QVERIFY(waitUntil([&] { return server->shown.size() == 1; }));
        server.reset();
        first.reset();
        const PrivateBus second;
        lead(second);
        server = std::make_unique<StandInServer>(second.address);
        QVERIFY(server->come());
        QVERIFY(waitUntil([&] {
            notifier.post({u"two"_qs, {}}, {});
            return !server->shown.isEmpty();
        }));
    }

private:
    PrivateBus m_bus;
};

QTEST_GUILESS_MAIN(LinuxNotifierTest)
#include "LinuxNotifierTest.moc"
