#include "ProcessMachine.h"
#include "platform/linux/EnergyMeter.h"
#include "platform/linux/MemoryUse.h"
#include "support/Table.h"

#include <QtTest/QTest>

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <map>

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
        std::string part(20'000, 'x');
        for (std::size_t moved = 0; moved < count; moved += part.size())
            if (::send(near.number(), part.data(), part.size(), 0) != ssize_t(part.size()) ||
                ::recv(far.number(), part.data(), part.size(), MSG_WAITALL) != ssize_t(part.size()))
                return;
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
    void energy()
    {
        // Milliseconds it ran, wake-ups and seconds.
        compareTable(fixture(u"linux/energy.txt"_qs), [](const Cells &row) {
            const auto half = static_cast<quint64>(row.number(1) * 500'000);
            const auto wakeUps = static_cast<quint64>(row.number(2)) / 2;
            // Half of it in a thread that began meanwhile; 3 ended, 4 is another under its
            // number.
            const ProcessRun before = {
                {1, {5'000'000'000, 70}}, {3, {9'000'000'000, 9}}, {4, {9'000'000'000, 9}}};
            const ProcessRun after = {
                {1, {5'000'000'000 + half, 70 + wakeUps}}, {2, {half, wakeUps}}, {4, {1, 1}}};
            return QString::number(energyImpact(before, after, row.number(3)));
        });
    }

    void threadsAreReadWhereThereAreSeveral()
    {
        const StandIn proc;
        // 10 is of a kernel that does not count, 11 has ended.
        proc.plant("7/schedstat | 1000 2 3\\n\n8/schedstat | 1 1 1\\n\n8/task/8/schedstat | 10 0 1\\n\n"
                   "8/task/9/schedstat | 20 0 2\\n\n10/schedstat | 0 0 0\\n");
        const std::vector<MeasuredProcess> processes = {{7, 1}, {8, 2}, {10, 1}, {11, 1}};
        QStringList words;
        for (const ProcessRun &run : readRuns(proc.path(), processes)) {
            words.append(u"-"_qs);
            for (const auto &[thread, counts] : std::map(run.begin(), run.end()))
                words.append(u"%1: %2 %3"_qs.arg(thread).arg(counts.nanoseconds).arg(counts.starts));
        }
        QCOMPARE(words.join(u' '), u"- 7: 1000 3 - 8: 10 1 9: 20 2 - -"_qs);
    }

    void onlyThoseThatRanAreMeasured()
    {
        ProcessMachine machine;
        const StandIn &proc = machine.proc;
        StandInProcess busy{.pid = 5, .command = "busy", .program = "/usr/bin/busy", .runTicks = 10};
        busy.writeTo(proc);
        StandInProcess{.pid = 6, .command = "idle", .runTicks = 10}.writeTo(proc);
        proc.write("5/schedstat", "1000000000 0 10\n");
        proc.write("6/schedstat", "1000000000 0 10\n");
        LinuxProcessSurveyor surveyor = machine.surveyor();
        surveyor.begin();
        machine.setTime(1060);
        busy.runTicks += 10;
        busy.writeTo(proc);
        const auto survey = surveyor.begin();
        proc.write("5/schedstat", "1400000000 0 260\n");
        proc.write("6/schedstat", "1900000000 0 900\n");
        machine.setTime(
            1062); // the second is over long since: no wait, and the figures are over the real time
        const auto power = survey->power();
        QCOMPARE(power.size(), std::size_t{1});
        QCOMPARE(power.front().pid, 5);
        QCOMPARE(power.front().command, u"busy"_qs);
        QCOMPARE(power.front().power, 22.5);
    }

    void bytesOfARealConnection()
    {
        for (const int family : {AF_INET, AF_INET6}) {
            const Loopback connection(family);
            if (!connection.far.isOpen())
                continue; // no such network here
            ProcessMachine machine(10, "/proc");
            LinuxProcessSurveyor surveyor = machine.surveyor(tcpSocketBytes);
            const auto survey = surveyor.begin();
            connection.move(3'000'000);
            machine.now += 2;
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
    }

    void trafficPerSecondFromTwoReadings()
    {
        ProcessMachine machine;
        for (const int pid : {5, 6})
            StandInProcess{.pid = pid, .command = "p"}.writeTo(machine.proc);
        machine.proc.plant("5/fd/3 | -> socket:[101]\n5/fd/4 | -> /dev/null\n"
                           "6/fd/7 | -> socket:[102]\n6/fd/8 | -> socket:[103]");
        const std::uint32_t user = ::getuid();
        std::vector<SocketBytes> sockets = {
            {1, 101, user, 1000, 50}, {2, 102, user, 7, 7}, {9, 104, user, 0, 0}};
        LinuxProcessSurveyor surveyor = machine.surveyor([&sockets] { return std::optional(sockets); });
        const auto survey = surveyor.begin();
        sockets = {{1, 101, user, 3000, 50},  // moved
                   {2, 102, user, 7, 7},      // idle
                   {3, 103, user, 0, 800},    // made within the second: counts whole
                   {4, 0, user, 500, 500},    // closed by its program
                   {5, 555, user, 500, 500}}; // nobody shows it
        machine.now += 2;
        QStringList rows;
        for (const NetworkRow &row : survey->network())
            rows += u"%1: %2 in, %3 out"_qs.arg(row.pid).arg(row.bytesIn).arg(row.bytesOut);
        QCOMPARE(rows.join(u'\n'), u"5: 1000 in, 0 out\n6: 0 in, 400 out"_qs);
    }

    void trafficIsOneOverAMinute()
    {
        // Seconds, and what the connection had moved by then; bytes per second.
        ProcessMachine machine;
        StandInProcess{.pid = 5, .command = "p"}.writeTo(machine.proc);
        machine.proc.link("5/fd/3", "socket:[101]");
        SocketBytes socket = {1, 101, ::getuid(), 1000, 0};
        LinuxProcessSurveyor surveyor =
            machine.surveyor([&socket] { return std::optional(std::vector{socket}); });
        auto survey = surveyor.begin();
        compareTable(fixture(u"linux/traffic.txt"_qs), [&](const Cells &row) {
            if (!survey)
                survey = surveyor.begin();
            machine.now = 1000 + row.number(1);
            socket.received = quint64(row.number(2));
            const auto traffic = std::exchange(survey, nullptr)->network();
            return traffic.empty() ? u"none"_qs : QString::number(traffic.front().bytesIn);
        });
    }

    void theFirstSurveyIsOverItsOwnSecond()
    {
        ProcessMachine machine;
        StandInProcess old{.pid = 5, .command = "old", .runTicks = 90'000, .startTicks = 1};
        old.writeTo(machine.proc);
        LinuxProcessSurveyor surveyor = machine.surveyor();
        const auto survey = surveyor.begin();
        machine.setTime(1001);
        old.runTicks += static_cast<unsigned long>(ticksPerSecond() / 2);
        old.writeTo(machine.proc);
        QCOMPARE(survey->busiest()->front().cpuPercent, 50.0);
    }

    void stoppedWaitGivesNothing()
    {
        StopSource stop;
        ProcessMachine machine(10, "/proc");
        LinuxProcessSurveyor surveyor = machine.surveyor(tcpSocketBytes, stop.token());
        const auto survey = surveyor.begin();
        stop.requestStop();
        QVERIFY(survey->power().empty());
        QVERIFY(survey->network().empty());
        QVERIFY(!survey->busiest()->empty());
    }

    void memoryTogether()
    {
        // Each process' number, its parent's, whether it was forked, its own, file and shared KiB.
        compareTable(fixture(u"linux/memory_together.txt"_qs), [](const Cells &row) {
            std::vector<MemoryUse> uses;
            for (const QByteArray &words : row[1].split(',')) {
                const QList<QByteArray> word = words.simplified().split(' ');
                uses.push_back({word[0].toInt(), word[1].toInt(), word[2] == "f", word[3].toULong(),
                                word[4].toULong(), word[5].toULong()});
            }
            return QString::number(swabby::memoryTogether(uses));
        });
    }

    void memoryTogetherIsAboutWhatTheKernelSays()
    {
        const std::vector<char> inherited(200'000'000, 'x');
        const ForkedChild child;
        ProcessMachine machine(10, "/proc");
        LinuxProcessSurveyor surveyor = machine.surveyor();
        const auto survey = surveyor.begin();
        machine.now += 1;
        const std::vector<std::int32_t> pids = {::getpid(), child.pid};
        const auto together = static_cast<double>(survey->memoryTogether(pids).value_or(0));
        double proportional = 0;
        for (const std::int32_t pid : pids) {
            std::string_view text;
            const std::string rollup = fileText("/proc/" + std::to_string(pid) + "/smaps_rollup");
            for (text = rollup; const auto line = nextLine(text);) {
                std::string_view rest = *line;
                if (nextWord(rest) == "Pss:")
                    proportional += 1024.0 * integerOf<quint64>(nextWord(rest)).value_or(0);
            }
        }
        QVERIFY2(std::abs(together / proportional - 1) < 0.15,
                 qPrintable(u"%1 of %2"_qs.arg(together).arg(proportional)));
    }

    void ownersAreKeptAndCheckedAgain()
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

    void garbledSocketDumps()
    {
        const std::string plain(sizeof(inet_diag_msg), '\0');
        const std::string longAttribute = plain + std::string("\xff\x7f\x02\x00", 4);
        const std::string emptyAttribute = plain + std::string("\x00\x00\x02\x00", 4);
        constexpr std::uint16_t socket = 20; // SOCK_DIAG_BY_FAMILY
        struct Dump {
            const char *name;
            std::string datagram;
            std::size_t sockets = 0;
            int more = 0; ///< -1: failed
        };
        for (const Dump &dump :
             {Dump{"one socket, no counts", netlinkMessage(socket, plain), 1, 1},
              Dump{"one and the end", netlinkMessage(socket, plain) + netlinkMessage(NLMSG_DONE, {}), 1, 0},
              Dump{"attribute longer than the message", netlinkMessage(socket, longAttribute), 1, 1},
              Dump{"attribute without a length", netlinkMessage(socket, emptyAttribute), 1, 1},
              Dump{"description cut off", netlinkMessage(socket, plain.substr(1)), 0, 1},
              Dump{"refused", netlinkMessage(NLMSG_ERROR, std::string(20, '\1')), 0, -1},
              Dump{"message cut off", netlinkMessage(socket, plain).substr(0, 40), 0, 1},
              Dump{"nothing", "", 0, 1}}) {
            std::vector<SocketBytes> found;
            const auto result = addSockets(bytesOf(dump.datagram), found);
            QVERIFY2((result ? int{*result} : -1) == dump.more && found.size() == dump.sockets, dump.name);
        }
    }
};

QTEST_APPLESS_MAIN(LinuxMeasuringTest)
#include "LinuxMeasuringTest.moc"
