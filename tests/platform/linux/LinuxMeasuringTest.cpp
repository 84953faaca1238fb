#include "StandIn.h"
#include "platform/linux/EnergyMeter.h"
#include "platform/linux/LinuxProcessSurveyor.h"

#include <QtTest/QTest>

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <thread>

using namespace swabby;

namespace {

/// A connection of this process with itself.
struct Loopback {
    explicit Loopback(int family)
    {
        sockaddr_storage place = {};
        place.ss_family = static_cast<sa_family_t>(family);
        if (family == AF_INET)
            reinterpret_cast<sockaddr_in &>(place).sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        else
            reinterpret_cast<sockaddr_in6 &>(place).sin6_addr = in6addr_loopback;
        auto *address = reinterpret_cast<sockaddr *>(&place);
        socklen_t length = sizeof place;
        const Descriptor listener(::socket(family, SOCK_STREAM, 0));
        if (::bind(listener.number(), address, length) != 0 || ::listen(listener.number(), 1) != 0 ||
            ::getsockname(listener.number(), address, &length) != 0)
            return;
        near = Descriptor(::socket(family, SOCK_STREAM, 0));
        if (::connect(near.number(), address, length) == 0)
            far = Descriptor(::accept(listener.number(), nullptr, nullptr));
    }

    /// Moves the bytes to the far side and takes them out there.
    void move(std::size_t count) const
    {
        std::string bytes(count, 'x');
        std::size_t left = count;
        std::thread reader([&] {
            std::array<char, 65536> buffer;
            while (left > 0) {
                const ssize_t got = ::read(far.number(), buffer.data(), buffer.size());
                if (got <= 0)
                    return;
                left -= static_cast<std::size_t>(got);
            }
        });
        for (std::size_t sent = 0; sent < count;) {
            const ssize_t part = ::write(near.number(), bytes.data() + sent, count - sent);
            if (part <= 0)
                break;
            sent += static_cast<std::size_t>(part);
        }
        reader.join();
    }

    Descriptor near;
    Descriptor far;
};

std::span<const std::byte> bytesOf(const std::string &text)
{
    return std::as_bytes(std::span(text.data(), text.size()));
}

std::string netlinkMessage(std::uint16_t type, const std::string &content)
{
    nlmsghdr header = {};
    header.nlmsg_len = static_cast<std::uint32_t>(sizeof header + content.size());
    header.nlmsg_type = type;
    return std::string(reinterpret_cast<const char *>(&header), sizeof header) + content;
}

} // namespace

class LinuxMeasuringTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void energy_data();
    void energy();
    void threadsAreReadWhereThereAreSeveral();
    void onlyThoseThatRanAreMeasured();
    void bytesOfARealConnection_data();
    void bytesOfARealConnection();
    void trafficPerSecondFromTwoReadings();
    void stoppedWaitGivesNothing();
    void ownersAreKeptAndCheckedAgain();
    void garbledSocketDumps_data();
    void garbledSocketDumps();
};

void LinuxMeasuringTest::energy_data()
{
    QTest::addColumn<quint64>("runMilliseconds");
    QTest::addColumn<quint64>("wakeUps");
    QTest::addColumn<double>("seconds");
    QTest::addColumn<double>("expected");
    QTest::newRow("asleep") << quint64{0} << quint64{0} << 1.0 << 0.0;
    QTest::newRow("one processor busy") << quint64{1000} << quint64{0} << 1.0 << 100.0;
    QTest::newRow("only waking up") << quint64{0} << quint64{500} << 1.0 << 10.0;
    QTest::newRow("both, over two seconds") << quint64{500} << quint64{1000} << 2.0 << 35.0;
    QTest::newRow("no time passed") << quint64{500} << quint64{1000} << 0.0 << 0.0;
}

void LinuxMeasuringTest::energy()
{
    QFETCH(const quint64, runMilliseconds);
    QFETCH(const quint64, wakeUps);
    QFETCH(const double, seconds);
    QFETCH(const double, expected);
    // Half of it in a thread that began meanwhile; thread 3 ended, thread 4 is another under its number.
    const ProcessRun before = {{1, {5'000'000'000, 70}}, {3, {9'000'000'000, 9}}, {4, {9'000'000'000, 9}}};
    const ProcessRun after = {{1, {5'000'000'000 + runMilliseconds * 500'000, 70 + wakeUps / 2}},
                              {2, {runMilliseconds * 500'000, wakeUps / 2}},
                              {4, {1, 1}}};
    QCOMPARE(energyImpact(before, after, seconds), expected);
}

void LinuxMeasuringTest::threadsAreReadWhereThereAreSeveral()
{
    const StandIn proc;
    proc.write("7/schedstat", "1000 2 3\n");
    proc.write("8/schedstat", "1 1 1\n");
    proc.write("8/task/8/schedstat", "10 0 1\n");
    proc.write("8/task/9/schedstat", "20 0 2\n");
    proc.write("10/schedstat", "0 0 0\n"); // a kernel that does not count
    const std::vector<MeasuredProcess> processes = {{7, 1}, {8, 2}, {10, 1}, {11, 1}};
    const std::vector<ProcessRun> runs = readRuns(proc.path(), processes);
    QCOMPARE(runs.size(), std::size_t{4});
    QCOMPARE(runs[0].at(7).nanoseconds, std::uint64_t{1000});
    QCOMPARE(runs[0].at(7).starts, std::uint64_t{3});
    QCOMPARE(runs[1].size(), std::size_t{2});
    QCOMPARE(runs[1].at(9).nanoseconds, std::uint64_t{20});
    QVERIFY(runs[2].empty() && runs[3].empty());
}

void LinuxMeasuringTest::onlyThoseThatRanAreMeasured()
{
    const StandIn proc;
    StandInProcess busy{.pid = 5, .command = "busy", .program = "/usr/bin/busy", .runTicks = 10};
    StandInProcess idle{.pid = 6, .command = "idle", .runTicks = 10};
    busy.writeTo(proc);
    idle.writeTo(proc);
    proc.write("5/schedstat", "1000000000 0 10\n");
    proc.write("6/schedstat", "1000000000 0 10\n");
    double now = 100;
    const auto clock = [&now] { return now; };
    const auto table =
        std::make_shared<ProcessTable>(ProcessTable::Sources{proc.path(), clock, 10},
                                       ProgramFinder(proc.path(), DesktopApplications({}, {})));
    LinuxProcessSurveyor surveyor({proc.path(), table, clock, [] { return std::nullopt; }, {}});
    surveyor.begin();
    now = 160;
    busy.runTicks += 10;
    busy.writeTo(proc);
    const auto survey = surveyor.begin();
    proc.write("5/schedstat", "1400000000 0 260\n");
    proc.write("6/schedstat", "1900000000 0 900\n");
    now = 162; // the second is over long since: no wait, and the figures are over the real time
    const auto power = survey->power();
    QCOMPARE(power.size(), std::size_t{1});
    QCOMPARE(power.front().pid, 5);
    QCOMPARE(power.front().command, u"busy"_qs);
    QCOMPARE(power.front().power, 22.5);
}

void LinuxMeasuringTest::bytesOfARealConnection_data()
{
    QTest::addColumn<int>("family");
    QTest::newRow("IPv4") << AF_INET;
    QTest::newRow("IPv6") << AF_INET6;
}

void LinuxMeasuringTest::bytesOfARealConnection()
{
    QFETCH(const int, family);
    const Loopback connection(family);
    if (!connection.far.isOpen())
        QSKIP("no such network here");
    double now = 0;
    const auto clock = [&now] { return now; };
    const auto table = std::make_shared<ProcessTable>(ProcessTable::Sources{"/proc", clock, 10},
                                                      ProgramFinder("/proc", DesktopApplications({}, {})));
    LinuxProcessSurveyor surveyor({"/proc", table, clock, tcpSocketBytes, {}});
    const auto survey = surveyor.begin();
    connection.move(3'000'000);
    now = 2;
    qint64 received = 0;
    qint64 sent = 0;
    for (const NetworkRow &row : survey->network()) {
        if (row.pid != ::getpid())
            continue;
        received += row.bytesIn;
        sent += row.bytesOut;
    }
    QCOMPARE(received, 1'500'000);
    // The last confirmation may still be on its way.
    QVERIFY2(sent > 1'000'000 && sent <= 1'500'000, qPrintable(QString::number(sent)));
}

void LinuxMeasuringTest::trafficPerSecondFromTwoReadings()
{
    const StandIn proc;
    for (const int pid : {5, 6})
        StandInProcess{.pid = pid, .command = "p"}.writeTo(proc);
    proc.link("5/fd/3", "socket:[101]");
    proc.link("5/fd/4", "/dev/null");
    proc.link("6/fd/7", "socket:[102]");
    proc.link("6/fd/8", "socket:[103]");
    const std::uint32_t user = ::getuid();
    std::vector<SocketBytes> sockets = {{1, 101, user, 1000, 50}, {2, 102, user, 7, 7}, {9, 104, user, 0, 0}};
    double now = 0;
    const auto clock = [&now] { return now; };
    const auto table =
        std::make_shared<ProcessTable>(ProcessTable::Sources{proc.path(), clock, 10},
                                       ProgramFinder(proc.path(), DesktopApplications({}, {})));
    LinuxProcessSurveyor surveyor(
        {proc.path(), table, clock, [&sockets] { return std::optional(sockets); }, {}});
    const auto survey = surveyor.begin();
    sockets = {{1, 101, user, 3000, 50},  // moved
               {2, 102, user, 7, 7},      // idle
               {3, 103, user, 0, 800},    // made within the second: counts whole
               {4, 0, user, 500, 500},    // closed by its program
               {5, 555, user, 500, 500}}; // nobody shows it
    now = 2;
    const auto rows = survey->network();
    QCOMPARE(rows.size(), std::size_t{2});
    QCOMPARE((QList<qint64>{rows[0].pid, rows[0].bytesIn, rows[0].bytesOut}), (QList<qint64>{5, 1000, 0}));
    QCOMPARE((QList<qint64>{rows[1].pid, rows[1].bytesIn, rows[1].bytesOut}), (QList<qint64>{6, 0, 400}));
}

void LinuxMeasuringTest::stoppedWaitGivesNothing()
{
    StopSource stop;
    const auto clock = [] { return 0.0; };
    const auto table = std::make_shared<ProcessTable>(ProcessTable::Sources{"/proc", clock, 10},
                                                      ProgramFinder("/proc", DesktopApplications({}, {})));
    LinuxProcessSurveyor surveyor({"/proc", table, clock, tcpSocketBytes, stop.token()});
    const auto survey = surveyor.begin();
    stop.requestStop();
    QVERIFY(survey->power().empty());
    QVERIFY(survey->network().empty());
    QVERIFY(!survey->busiest()->empty());
}

void LinuxMeasuringTest::ownersAreKeptAndCheckedAgain()
{
    const StandIn proc;
    proc.link("5/fd/3", "socket:[101]");
    proc.link("6/fd/3", "socket:[102]");
    SocketOwners owners(proc.path());
    using Found = std::unordered_map<std::uint32_t, std::int32_t>;
    const std::vector<std::int32_t> pids = {5, 6};
    QCOMPARE(owners.find({101, 999}, pids), (Found{{101, 5}}));

    // Known ones need no search, neither found ones nor those that nobody shows.
    proc.link("5/fd/9", "socket:[999]");
    QCOMPARE(owners.find({101, 999}, {}), (Found{{101, 5}}));

    // The server hands its connection to a child.
    proc.link("5/fd/3", "socket:[7777]");
    proc.link("6/fd/4", "socket:[101]");
    QCOMPARE(owners.find({101, 102}, pids), (Found{{101, 6}, {102, 6}}));

    // Closed sockets are forgotten, and a new one of the same number is searched for.
    owners.forgetExcept({101});
    QCOMPARE(owners.find({999}, pids), (Found{{999, 5}}));
}

void LinuxMeasuringTest::garbledSocketDumps_data()
{
    QTest::addColumn<QByteArray>("datagram");
    QTest::addColumn<int>("sockets");
    QTest::addColumn<int>("more"); // -1: failed

    const std::string plain(sizeof(inet_diag_msg), '\0');
    const std::string longAttribute = plain + std::string("\xff\x7f\x02\x00", 4);
    const std::string emptyAttribute = plain + std::string("\x00\x00\x02\x00", 4);
    const auto row = [](const char *name, const std::string &datagram, int sockets, int more) {
        QTest::newRow(name) << QByteArray::fromStdString(datagram) << sockets << more;
    };
    constexpr std::uint16_t socket = 20; // SOCK_DIAG_BY_FAMILY
    row("one socket, no counts", netlinkMessage(socket, plain), 1, 1);
    row("one socket and the end", netlinkMessage(socket, plain) + netlinkMessage(NLMSG_DONE, {}), 1, 0);
    row("attribute longer than the message", netlinkMessage(socket, longAttribute), 1, 1);
    row("attribute without a length", netlinkMessage(socket, emptyAttribute), 1, 1);
    row("description cut off", netlinkMessage(socket, plain.substr(1)), 0, 1);
    row("refused", netlinkMessage(NLMSG_ERROR, std::string(20, '\1')), 0, -1);
    row("message cut off", netlinkMessage(socket, plain).substr(0, 40), 0, 1);
    row("nothing", "", 0, 1);
}

void LinuxMeasuringTest::garbledSocketDumps()
{
    QFETCH(const QByteArray, datagram);
    QFETCH(const int, sockets);
    QFETCH(const int, more);
    std::vector<SocketBytes> found;
    const std::string text = datagram.toStdString();
    const auto result = addSockets(bytesOf(text), found);
    QCOMPARE(result ? int{*result} : -1, more);
    QCOMPARE(static_cast<int>(found.size()), sockets);
}

QTEST_APPLESS_MAIN(LinuxMeasuringTest)
#include "LinuxMeasuringTest.moc"
