#include "ProcessMachine.h"
#include "platform/linux/LinuxProgramOrigins.h"
#include "support/Table.h"

#include <QtTest/QTest>

#include <unistd.h>

#include <thread>

using namespace swabby;

namespace {

unsigned long seconds(double count)
{
    return static_cast<unsigned long>(count * ticksPerSecond());
}

/// The records of one package, which brought everything.
struct PackageRecords final : Shell {
    std::optional<std::string> perform(const std::string &, const std::vector<std::string> &arguments,
                                       ToolOutput, const StopToken &) override
    {
        const bool isSearch = arguments.at(0) == "--search";
        return isSearch ? "diversion by loom from: /x\nmill:amd64, other: " + (asked = arguments.at(2)) + '\n'
                        : arguments.back() + " 2.0-1\n";
    }
    bool has(const std::string &tool) override { return tool == "/usr/bin/dpkg-query"; }
    bool launch(const std::string &, const std::vector<std::string> &) override { return false; }

    std::string asked;
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

    void whereAProgramComesFrom()
    {
        const ProcessMachine machine;
        const StandIn &proc = machine.proc;
        proc.write("mill.py", "");
        proc.write("21/cmdline", "python3" + std::string(1, '\0') + proc.path("mill.py"));
        StandInProcess{.pid = 20, .command = "loom", .program = "/usr/bin/loom"}.writeTo(proc);
        StandInProcess{.pid = 21, .parentPid = 20, .command = "python3", .program = "/usr/bin/python3"}
            .writeTo(proc);
        PackageRecords records;
        LinuxProgramOrigins origins(machine.root, DesktopApplications({}, {}), records);
        const ProgramOrigin script = origins.ofProcess(21);
        const QString file = QString::fromStdString(proc.path("mill.py"));
        QCOMPARE(script.file + u' ' + script.startedBy + u' ' + script.package,
                 file + u" loom mill 2.0-1"_qs);
        QCOMPARE(records.asked, proc.path("mill.py"));
        QVERIFY(!script.account.isEmpty());
        QCOMPARE(origins.ofProcess(20).startedBy, u"the system"_qs);
        QVERIFY(origins.ofProcess(22) == ProgramOrigin());
        records.asked.clear();
        QVERIFY(origins.packageOf(u"/opt/*"_qs).isEmpty() && records.asked.empty()); // would be a pattern
        QCOMPARE(origins.packageOf(u"/snap/mail/211/mail"_qs), u"mail (snap)"_qs);
    }

    void listings()
    {
        // The time, from 1000 on a new machine's; the processes that changed, each "pid command program,
        // seconds run, second of the start, code's start", only a pid when it ended; percent and program.
        std::optional<ProcessMachine> machine;
        compareTable(fixture(u"linux/listings.txt"_qs), [&](const Cells &row) {
            if (row[1] == "1000")
                machine.emplace();
            machine->setTime(row.number(1));
            for (const QByteArray &words : row[2].split(',')) {
                const QList<QByteArray> word = words.simplified().split(' ');
                if (word.size() < 6)
                    machine->proc.remove(word[0].isEmpty() ? "none" : word[0].toStdString());
                else
                    StandInProcess{.pid = word[0].toInt(),
                                   .command = word[1].toStdString(),
                                   .program = word[2] == "-" ? "" : word[2].toStdString(),
                                   .runTicks = seconds(word[3].toDouble()),
                                   .startTicks = seconds(word[4].toDouble()),
                                   .codeStart = word[5].toULong()}
                        .writeTo(machine->proc);
            }
            const auto listing = machine->table->list();
            if (!listing)
                return u"none"_qs;
            return lines(listing->rows,
                         [](const TableRow &process) {
                             return u"%1 %2 %3%4"_qs.arg(process.pid)
                                 .arg(std::lround(process.cpuPercent))
                                 .arg(QString::fromStdString(process.program->path),
                                      process.hasRun ? QString() : u" idle"_qs);
                         })
                .replace(u'\n', u", "_qs);
        });
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
        StandInProcess{.pid = 1, .command = "first"}.writeTo(machine.proc);
        machine.table->list();
        machine.setTime(1001);
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

    void whatTheSessionStandsOnIsMarked()
    {
        ProcessMachine machine;
        int pid = 0;
        for (const char *program :
             {"/usr/bin/gnome-shell", "/usr/bin/shell", "/opt/i3", "/opt/i", "/usr/bin/X", "/tmp/X"})
            StandInProcess{.pid = ++pid, .command = "p", .program = program}.writeTo(machine.proc);
        LinuxProcessSurveyor surveyor({machine.root,
                                       machine.table,
                                       [&] { return machine.now; },
                                       [] { return std::nullopt; },
                                       {},
                                       [] {
                                           return std::unordered_set{4, 99};
                                       }});
        QString marked;
        const auto survey = surveyor.begin();
        machine.now += 1;
        for (const ProcessRow &row : survey->matching({1, 2, 3, 4, 5, 6}))
            marked += row.holdsSession ? QString::number(row.pid) : u"-"_qs;
        QCOMPARE(marked, u"1-345-"_qs);
    }

    void realProcesses()
    {
        const ForkedChild child;
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
