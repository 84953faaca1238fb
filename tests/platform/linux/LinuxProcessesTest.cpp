#include "ProcessMachine.h"
#include "support/Table.h"

#include <QtTest/QTest>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

using namespace swabby;

namespace {

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
    void statLine()
    {
        // What stands behind the process number; command, parent, threads, run, start and resident pages.
        compareTable(fixture(u"linux/stat_line.txt"_qs), [](const Cells &row) {
            const QByteArray rest =
                "S 42 1 1 0 -1 4194560 9 9 9 9 30 12 7 7 20 0 5 0 8765 123 321 99 1 2 3 0";
            const std::string line =
                row[1].isEmpty() ? "" : "7 " + row[1].replace("REST", rest).toStdString();
            const auto stat = processStatFrom(line);
            if (!stat)
                return u"none"_qs;
            QString text = QString::fromUtf8(stat->command.data(), qsizetype(stat->command.size()));
            for (const std::uint64_t number : {std::uint64_t(stat->parentPid), std::uint64_t(stat->threads),
                                               stat->runTicks, stat->startTicks, stat->residentPages})
                text += u' ' + QString::number(number);
            return text;
        });
    }

    void shareIsThatSinceThePreviousListing()
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

    void newProcessCountsOverItsLife()
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

    void closeListingsCompareWithTheOneBefore()
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

    void reusedPidIsAnotherProcess()
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
        QVERIFY(!machine.table->list()); // nothing at all is no listing
    }

    void processBecomingAnotherProgramIsLookedUpAgain()
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

    void descriptorsStayWithinTheBudget()
    {
        const auto openFiles = [] { return static_cast<int>(folderEntries("/proc/self/fd").size()); };
        for (const int budget : {0, 3, 100}) {
            const int before = openFiles();
            ProcessMachine machine(static_cast<std::size_t>(budget));
            for (int pid = 1; pid <= 10; ++pid)
                StandInProcess{.pid = pid, .command = "p"}.writeTo(machine.proc);
            for (int round = 0; round < 3; ++round) {
                QCOMPARE(machine.table->list()->rows.size(), std::size_t{10});
                QCOMPARE(openFiles() - before, std::min(budget, 10));
            }
            for (int pid = 2; pid <= 10; ++pid)
                machine.proc.remove(std::to_string(pid));
            QCOMPARE(machine.table->list()->rows.size(), std::size_t{1});
            QCOMPARE(openFiles() - before, std::min(budget, 1));
        }
    }

    void unreadableFolderIsNoListing()
    {
        ProcessMachine machine(10, "/nowhere");
        LinuxProcessSurveyor surveyor = machine.surveyor();
        const auto survey = surveyor.begin();
        machine.now += 2;
        QVERIFY(!survey->busiest() && !survey->largest());
        QVERIFY(survey->matching({1}).empty() && survey->weights().empty());
        QVERIFY(survey->power().empty() && survey->network().empty());
    }

    void surveyAnswersFromOneListing()
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
        LinuxProcessSurveyor surveyor = machine.surveyor();
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

    void realProcesses()
    {
        const Child child;
        ProcessMachine machine(descriptorBudget(), "/proc");
        const TableRow *row = machine.row(child.pid);
        QVERIFY(row);
        QCOMPARE(row->parentPid, ::getpid());
        QCOMPARE(row->program->name, "linux_processes_test");
        QCOMPARE(row->program->path, linkTarget("/proc/self/exe"));
        QVERIFY(machine.row(::getpid())->residentBytes > 1'000'000);
        QCOMPARE(machine.table->pidRunning(linkTarget("/proc/self/exe"), {}),
                 std::min(::getpid(), child.pid));
        const TableRow *kernelThread = machine.row(2);
        if (kernelThread && kernelThread->program->name == "kthreadd") {
            QCOMPARE(kernelThread->program->path, "[kthreadd]");
            QVERIFY(!kernelThread->program->isApp);
        }
    }

    void overlappingListingsOfTheRealMachine()
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
};

QTEST_APPLESS_MAIN(LinuxProcessesTest)
#include "LinuxProcessesTest.moc"
