#include "StandIn.h"
#include "platform/linux/LinuxProcessSurveyor.h"

#include <QtTest/QTest>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

using namespace swabby;

namespace {

/// A /proc whose clock only moves when told.
class ProcessMachine {
public:
    explicit ProcessMachine(std::size_t descriptors = 100) : m_descriptors(descriptors)
    {
        proc.write("meminfo", "MemTotal: 4096 kB\nMemAvailable: 1 kB\n");
        setTime(1000);
    }

    void setTime(double seconds)
    {
        now = seconds;
        proc.write("uptime", std::to_string(seconds) + " 0.00\n");
    }
    const TableRow *row(std::int32_t pid)
    {
        listing = table.list();
        const auto found = std::find_if(listing->rows.begin(), listing->rows.end(),
                                        [pid](const TableRow &row) { return row.pid == pid; });
        return found == listing->rows.end() ? nullptr : &*found;
    }
    /// In whole percent of one processor; -1 for a process that is not listed.
    int percent(std::int32_t pid)
    {
        const TableRow *found = row(pid);
        return found ? static_cast<int>(std::lround(found->cpuPercent)) : -1;
    }

private:
    const std::size_t m_descriptors;

public:
    StandIn proc;
    double now = 0;
    ProcessTable table{ProcessTable::Sources{proc.path(), [this] { return now; }, m_descriptors},
                       ProgramFinder(proc.path(), DesktopApplications({}, {}))};
    std::optional<Listing> listing;
};

unsigned long seconds(double count)
{
    return static_cast<unsigned long>(count * ticksPerSecond());
}

/// An idle child of this test, gone with it.
class Child {
public:
    Child() : pid(::fork())
    {
        if (pid == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            while (true)
                ::pause();
        }
    }
    ~Child()
    {
        ::kill(pid, SIGKILL);
        ::waitpid(pid, nullptr, 0);
    }
    const pid_t pid;
};

} // namespace

class LinuxProcessesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void statLine_data();
    void statLine();
    void shareIsThatSinceThePreviousListing();
    void newProcessCountsOverItsLife();
    void closeListingsCompareWithTheOneBefore();
    void reusedPidIsAnotherProcess();
    void processBecomingAnotherProgramIsLookedUpAgain();
    void descriptorsStayWithinTheBudget_data();
    void descriptorsStayWithinTheBudget();
    void unreadableFolderIsNoListing();
    void surveyAnswersFromOneListing();
    void realProcesses();
    void overlappingListingsOfTheRealMachine();
};

void LinuxProcessesTest::statLine_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("expected"); // command, parent, threads, run, start, resident
    const QByteArray rest = " S 42 1 1 0 -1 4194560 9 9 9 9 30 12 7 7 20 0 5 0 8765 123 321 99 1 2 3 0";

    QTest::newRow("plain") << "7 (bash)" + rest << QByteArray("bash 42 5 42 8765 321");
    QTest::newRow("blanks and parentheses")
        << "7 (a) R 1 (b c)" + rest << QByteArray("a) R 1 (b c 42 5 42 8765 321");
    QTest::newRow("line ends") << "7 (a\nb)\n)" + rest << QByteArray("a\nb)\n 42 5 42 8765 321");
    QTest::newRow("empty name") << "7 ()" + rest << QByteArray(" 42 5 42 8765 321");
    QTest::newRow("no text") << "7 (\xff\xfe)" + rest << QByteArray("\xff\xfe 42 5 42 8765 321");
    QTest::newRow("negative resident size")
        << QByteArray("7 (x) S 42 1 1 0 -1 0 9 9 9 9 30 12 7 7 20 0 5 0 8765 123 -2 99 1 2 3")
        << QByteArray("x 42 5 42 8765 0");
    QTest::newRow("cut off") << QByteArray("7 (bash) S 42 1 1 0 -1 0 9 9 9 9 30") << QByteArray();
    QTest::newRow("parentheses the wrong way round") << "7 )bash(" + rest << QByteArray();
    QTest::newRow("no parentheses") << QByteArray("7 bash S 1 2 3") << QByteArray();
    QTest::newRow("words for numbers")
        << QByteArray("7 (x) S a b c d e f g h i j k l m n o p q r s t u v") << QByteArray();
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void LinuxProcessesTest::statLine()
{
    QFETCH(const QByteArray, line);
    QFETCH(const QByteArray, expected);
    const auto stat = processStatFrom({line.data(), static_cast<std::size_t>(line.size())});
    QByteArray text;
    if (stat) {
        text = QByteArray(stat->command.data(), static_cast<qsizetype>(stat->command.size()));
        for (const std::uint64_t number : {std::uint64_t(stat->parentPid), std::uint64_t(stat->threads),
                                           stat->runTicks, stat->startTicks, stat->residentPages})
            text += ' ' + QByteArray::number(qulonglong{number});
    }
    QCOMPARE(text, expected);
}

void LinuxProcessesTest::shareIsThatSinceThePreviousListing()
{
    ProcessMachine machine;
    StandInProcess process{
        .pid = 9, .command = "worker", .runTicks = seconds(100), .startTicks = seconds(800)};
    process.writeTo(machine.proc);
    QCOMPARE(machine.percent(9), 50); // 100 of its 200 seconds
    QVERIFY(machine.row(9)->hasRun);

    machine.setTime(1060);
    QCOMPARE(machine.percent(9), 0);
    QVERIFY(!machine.row(9)->hasRun);

    machine.setTime(1120);
    process.runTicks += seconds(90); // on two processors
    process.writeTo(machine.proc);
    QCOMPARE(machine.percent(9), 150);

    machine.setTime(1180);
    process.runTicks -= seconds(1); // counters of a garbled file never give a negative share
    process.writeTo(machine.proc);
    QCOMPARE(machine.percent(9), 0);
}

void LinuxProcessesTest::newProcessCountsOverItsLife()
{
    ProcessMachine machine;
    StandInProcess{.pid = 1, .command = "init"}.writeTo(machine.proc);
    machine.row(1);
    machine.setTime(1060);
    StandInProcess{.pid = 9, .command = "a", .runTicks = seconds(5), .startTicks = seconds(1050)}.writeTo(
        machine.proc);
    // One tick of a process that is one tick old is no full load.
    StandInProcess{.pid = 10, .command = "b", .runTicks = seconds(0.1), .startTicks = seconds(1059.9)}
        .writeTo(machine.proc);
    QCOMPARE(machine.percent(9), 50);
    QCOMPARE(machine.percent(10), 20);
}

void LinuxProcessesTest::closeListingsCompareWithTheOneBefore()
{
    ProcessMachine machine;
    StandInProcess process{.pid = 9, .command = "worker"};
    const auto run = [&](double now, double runSeconds) {
        machine.setTime(now);
        process.runTicks = seconds(runSeconds);
        process.writeTo(machine.proc);
        return machine.percent(9);
    };
    run(1000, 0);
    QCOMPARE(run(1010, 5), 50);
    QCOMPARE(run(1010.1, 5.1), 50); // since 1000, not 100 since 1010
    QCOMPARE(run(1010.4, 5.1), 49);
    QCOMPARE(run(1020, 5.1), 1); // since 1010: the close ones were no baselines
}

void LinuxProcessesTest::reusedPidIsAnotherProcess()
{
    ProcessMachine machine;
    StandInProcess{
        .pid = 9, .command = "old", .program = "/usr/bin/old", .runTicks = seconds(500), .startTicks = 1}
        .writeTo(machine.proc);
    QCOMPARE(machine.row(9)->program->name, "old");

    machine.setTime(1010);
    StandInProcess{.pid = 9,
                   .command = "new",
                   .program = "/usr/bin/new",
                   .runTicks = seconds(1),
                   .startTicks = seconds(1008)}
        .writeTo(machine.proc);
    QCOMPARE(machine.percent(9), 50);
    QCOMPARE(machine.row(9)->program->name, "new");

    machine.proc.remove("9");
    QVERIFY(!machine.table.list()); // nothing at all is no listing
}

void LinuxProcessesTest::processBecomingAnotherProgramIsLookedUpAgain()
{
    ProcessMachine machine;
    StandInProcess process{.pid = 9, .command = "starter", .program = "/usr/bin/dash"};
    process.writeTo(machine.proc);
    QCOMPARE(machine.row(9)->program->path, "/usr/bin/dash");
    process.program = "/usr/lib/thing/starter"; // exec under the same short name
    process.codeStart += 4096;
    process.writeTo(machine.proc);
    QCOMPARE(machine.row(9)->program->path, "/usr/lib/thing/starter");
    process.program = "/usr/bin/other";
    process.command = "other";
    process.writeTo(machine.proc);
    QCOMPARE(machine.row(9)->program->path, "/usr/bin/other");
}

void LinuxProcessesTest::descriptorsStayWithinTheBudget_data()
{
    QTest::addColumn<int>("budget");
    QTest::newRow("none") << 0;
    QTest::newRow("some") << 3;
    QTest::newRow("enough") << 100;
}

void LinuxProcessesTest::descriptorsStayWithinTheBudget()
{
    QFETCH(const int, budget);
    ProcessMachine machine(static_cast<std::size_t>(budget));
    const auto openFiles = [] { return static_cast<int>(folderEntries("/proc/self/fd").size()); };
    const int before = openFiles();
    for (int pid = 1; pid <= 10; ++pid)
        StandInProcess{.pid = pid, .command = "p"}.writeTo(machine.proc);
    for (int round = 0; round < 3; ++round) {
        QCOMPARE(machine.table.list()->rows.size(), std::size_t{10});
        QCOMPARE(openFiles() - before, std::min(budget, 10));
    }
    for (int pid = 2; pid <= 10; ++pid)
        machine.proc.remove(std::to_string(pid));
    QCOMPARE(machine.table.list()->rows.size(), std::size_t{1});
    QCOMPARE(openFiles() - before, std::min(budget, 1));
}

void LinuxProcessesTest::unreadableFolderIsNoListing()
{
    const auto table =
        std::make_shared<ProcessTable>(ProcessTable::Sources{"/nowhere", [] { return 1.0; }, 10},
                                       ProgramFinder("/nowhere", DesktopApplications({}, {})));
    double now = 0;
    LinuxProcessSurveyor surveyor(
        {"/nowhere", table, [&now] { return now += 2; }, [] { return std::nullopt; }, {}});
    const auto survey = surveyor.begin();
    QVERIFY(!survey->busiest() && !survey->largest());
    QVERIFY(survey->matching({1}).empty() && survey->weights().empty());
    QVERIFY(survey->power().empty() && survey->network().empty());
}

void LinuxProcessesTest::surveyAnswersFromOneListing()
{
    ProcessMachine machine;
    for (int pid = 1; pid <= 60; ++pid)
        StandInProcess{.pid = pid,
                       .command = "p",
                       .program = "/opt/tools/p" + std::to_string(pid),
                       .runTicks = seconds(pid),
                       .startTicks = seconds(900),
                       .residentPages = 61UL - static_cast<unsigned long>(pid)}
            .writeTo(machine.proc);
    LinuxProcessSurveyor surveyor({machine.proc.path(),
                                   std::shared_ptr<ProcessTable>(std::shared_ptr<void>(), &machine.table),
                                   [&] { return machine.now; },
                                   [] { return std::nullopt; },
                                   {}});
    const auto survey = surveyor.begin();
    machine.proc.remove("60"); // a second listing would miss it

    const auto busiest = survey->busiest();
    QCOMPARE(busiest->size(), std::size_t{50});
    QCOMPARE(busiest->front().pid, 60);
    QCOMPARE(busiest->front().name, u"p60"_qs);
    QCOMPARE(busiest->front().path, u"/opt/tools/p60"_qs);
    QCOMPARE(busiest->back().pid, 11);
    const auto largest = survey->largest();
    QCOMPARE(largest->front().pid, 1);
    const auto page = static_cast<quint64>(::sysconf(_SC_PAGESIZE));
    QCOMPARE(largest->front().residentBytes, 60 * page);
    QCOMPARE(largest->front().memPercent, 100.0 * 60 * static_cast<double>(page) / (4096 * 1024));
    QCOMPARE(survey->matching({60, 3, 999}).size(), std::size_t{2});
    QCOMPARE(survey->weights().size(), std::size_t{60});
}

void LinuxProcessesTest::realProcesses()
{
    const Child child;
    double now = 5;
    ProcessTable table({"/proc", [&now] { return now; }, descriptorBudget()},
                       ProgramFinder("/proc", DesktopApplications({}, {})));
    const auto listing = table.list();
    const auto row = [&](pid_t pid) {
        return std::find_if(listing->rows.begin(), listing->rows.end(),
                            [pid](const TableRow &candidate) { return candidate.pid == pid; });
    };
    QVERIFY(row(child.pid) != listing->rows.end());
    QCOMPARE(row(child.pid)->parentPid, ::getpid());
    QCOMPARE(row(child.pid)->program->name, "linux_processes_test");
    QCOMPARE(row(child.pid)->program->path, linkTarget("/proc/self/exe"));
    QVERIFY(row(::getpid())->residentBytes > 1'000'000);
    QCOMPARE(table.pidRunning(linkTarget("/proc/self/exe"), {}), std::min(::getpid(), child.pid));

    const auto kernelThread = row(2);
    if (kernelThread != listing->rows.end() && kernelThread->program->name == "kthreadd") {
        QCOMPARE(kernelThread->program->path, "[kthreadd]");
        QVERIFY(!kernelThread->program->isApp);
    }
}

void LinuxProcessesTest::overlappingListingsOfTheRealMachine()
{
    std::atomic<int> clock = 0;
    const auto table = std::make_shared<ProcessTable>(
        ProcessTable::Sources{"/proc", [&clock] { return clock += 1; }, 20},
        ProgramFinder("/proc",
                      DesktopApplications({"/usr/share/applications"}, {{}, "/root", {"/usr/bin"}})));
    LinuxProcessSurveyor surveyor({"/proc", table, [&clock] { return clock += 1; }, tcpSocketBytes, {}});
    std::atomic<int> complete = 0;
    const auto refresh = [&] {
        for (int round = 0; round < 20; ++round) {
            const auto survey = surveyor.begin();
            survey->power();
            survey->network();
            complete += survey->matching({::getpid()}).size() == 1 ? 1 : 0;
        }
    };
    std::thread other(refresh);
    refresh();
    other.join();
    QCOMPARE(complete, 40);
}

QTEST_APPLESS_MAIN(LinuxProcessesTest)
#include "LinuxProcessesTest.moc"
