#include "flows/cleanup/ConfirmationBuilder.h"
#include "platform/ThisComputer.h"
#include "support/RandomTree.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QJsonDocument>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <csignal>
#include <cstdio>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace swabby;
using Quitting::Means;
using Quitting::Outcome;

namespace {

/// What a stand-in machine says of Mill.
struct Answers {
    QByteArray askable; ///< "yes", "until then" it is asked, or "no"
    bool takesIt = false;
    QByteArray fate; ///< "ends", "goes on", "is not seen"
};

class Asker : public RunningApplications {
public:
    explicit Asker(Answers answers) : m_answers(std::move(answers)) {}
    std::vector<RunningApplication> list() override { return {}; }
    bool asksAll() const override { return false; }
    bool canAsk(const ProcessIdentity &) override { return m_answers.askable == "yes"; }
    bool terminate(const ProcessIdentity &) override
    {
        return m_answers.askable != "no" && m_answers.takesIt;
    }

private:
    const Answers m_answers;
};

class Ender : public ProcessControl {
public:
    explicit Ender(Answers answers) : m_answers(std::move(answers)) {}
    std::optional<ProcessIdentity> identify(std::int32_t pid) override { return ProcessIdentity{pid, 1}; }
    bool signal(const ProcessIdentity &, QuitSignal) override { return m_answers.takesIt; }
    std::optional<bool> endsWithin(std::chrono::milliseconds time, const ProcessIdentity &,
                                   const StopToken &stop) override
    {
        // Long after it was told, it still runs.
        if (time > std::chrono::minutes(1))
            stop.waitFor(time);
        return m_answers.fate == "is not seen" ? std::nullopt : std::optional(m_answers.fate == "ends");
    }

private:
    const Answers m_answers;
};

/// A Mac on which Mill runs as 50, its start as the file "start" says.
struct Mac : TemporaryMachine {
    explicit Mac(const QJsonObject &facts = {}) : TemporaryMachine(facts) { setProgram("50", "/opt/Mill"); }

    void setProgram(const QByteArray &pid, const QByteArray &command,
                    const QByteArray &start = "10:00:00") const
    {
        writeFile(u"listing"_qs, "  PID  PPID  %CPU %MEM    RSS COMM\n" + pid + " 7 30 1 9 " + command +
                                     "\n1 0 1 1 9 init\n");
        writeFile(u"start"_qs, "Sat Jan  3 " + start + " 2026\n");
        addTool(u"/bin/ps"_qs,
                R"(case "$2" in lstart=) cat "$MACHINE_DIR/start";; *) cat "$MACHINE_DIR/listing";; esac)");
    }
    QJsonArray effects() const
    {
        QJsonArray all = events(u"terminate"_qs);
        for (const QJsonValue &signal : events(u"signal"_qs))
            all.append(signal);
        return all;
    }
};

ProcessSample shownAs(std::int32_t pid, const QString &name)
{
    return {.pid = pid, .name = name, .path = {}};
}

/// A program of somebody else's: its parent has ended.
class Stranger {
public:
    Stranger() : m_output(::popen("tail -f /dev/null & echo $!", "r"))
    {
        if (std::fscanf(m_output, "%d", &m_pid) != 1)
            qFatal("no program to quit");
    }
    ~Stranger()
    {
        ::kill(m_pid, SIGKILL);
        ::pclose(m_output);
    }
    Stranger(const Stranger &) = delete;
    Stranger &operator=(const Stranger &) = delete;

    int pid() const { return m_pid; }
    /// Its output ends with it.
    bool hasEnded() const
    {
        pollfd watched = {::fileno(m_output), POLLIN, 0};
        return ::poll(&watched, 1, 30'000) == 1 && (watched.revents & POLLHUP) != 0;
    }
    bool runs() const { return ::kill(m_pid, 0) == 0; }

private:
    std::FILE *m_output;
    int m_pid = 0;
};

/// What quitting Mill does on such a Mac, when that happens to the program meanwhile.
QString effectsOfQuitting(const Cells &row)
{
    const bool isForced = row[0].contains("forced");
    QJsonObject facts;
    if (row[0].contains("terminates") || row[0].contains("refuses")) {
        const QJsonObject mill = {{u"pid"_qs, 50}, {u"terminates"_qs, row[0].contains("terminates")}};
        facts.insert(u"runningApplications"_qs, QJsonArray{mill});
    }
    if (row[0].contains("signalled"))
        facts.insert(u"unsignalablePids"_qs, QJsonArray{50});
    if (row[0].contains("ourselves"))
        facts.insert(u"ownProcessID"_qs, 50);
    const Mac mac(facts);
    AppState state(mac.open(), Record::nothing);
    QuitFlow flow(state);
    const QSignalSpy finished(&flow, &QuitFlow::finished);
    state.refresh();
    waitUntil([&] { return state.refreshesApplied() == 1; });
    const qsizetype listed = state.processes().size();
    const ProcessSample mill = shownAs(50, u"Mill"_qs);
    const auto change = [&](const QByteArray &when) {
        if (row[1] == when + " gone")
            mac.setProgram("51", "/opt/Mill", {});
        if (row[1] == when + " another name")
            mac.setProgram("50", "/opt/Loom", "11:00:00");
        if (row[1] == when + " another start")
            mac.setProgram("50", "/opt/Mill", "11:00:00");
    };
    change("shown");
    const auto plan = flow.plan(mill, isForced ? Quitting::Force::yes : Quitting::Force::no);
    if (!plan.isFinished())
        return u"the question would wait"_qs;
    QFuture(plan.result().identity).waitForFinished();
    change("asked");
    flow.quit(mill, plan.result());
    waitUntil([&] { return !finished.isEmpty(); });
    const bool wasTold = !mac.effects().isEmpty();
    const auto outcome = wasTold ? Quitting::Outcome::told : Quitting::Outcome::notTold;
    if (finished.value(0) != QVariantList{50, QVariant::fromValue(outcome)} ||
        state.processes().size() != listed - (wasTold ? 1 : 0))
        return u"it says something else than it did"_qs;
    return QString::fromUtf8(QJsonDocument(mac.effects()).toJson(QJsonDocument::Compact));
}

} // namespace

class QuitFlowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void quitting()
    {
        // Between being shown and the question, and between the question and the answer. Before the question
        // nothing tells another start from the program that was shown.
        compareTable(fixture(u"flows/quitting.txt"_qs), &effectsOfQuitting);
    }

    void theFirstProgramsAreNeverEnded()
    {
        const Mac mac;
        const auto machine = mac.open();
        for (const int pid : {-50, -1, 0, 1}) {
            QVERIFY(!Quitting::identify(shownAs(pid, u"init"_qs), *machine));
            for (const auto means : {Means::question, Means::terminate, Means::kill})
                QCOMPARE(Quitting::quit({pid, 0}, means, *machine), Outcome::notTold);
        }
        // Nor is what the session stands on, unless the question said so.
        mac.setProgram("50", "/System/Library/CoreServices/Dock.app/Contents/MacOS/Dock");
        ProcessSample dock = shownAs(50, u"Dock"_qs);
        for (const bool isKnown : {false, true}) {
            dock.holdsSession = isKnown;
            QCOMPARE(Quitting::identify(dock, *machine).has_value(), isKnown);
        }
        QCOMPARE(mac.effects(), QJsonArray());
    }

    void realPrograms()
    {
        const Ground home;
        qputenv("HOME", home.path().c_str());
        qunsetenv("DISPLAY");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
        const auto machine = makeThisComputer();
        for (const auto means : {Means::terminate, Means::kill}) {
            const Stranger tail;
            const ProcessSample shown = shownAs(tail.pid(), u"tail"_qs);
            QVERIFY(!Quitting::identify(shownAs(tail.pid(), u"Mill"_qs), *machine));
            std::optional<ProcessIdentity> identity; // from when the new process has become this program
            QVERIFY(waitUntil([&] {
                identity = Quitting::identify(shown, *machine);
                return identity.has_value();
            }));
            // Who had this id before is not who has it now.
            ProcessIdentity before = *identity;
            --before.started;
            QCOMPARE(Quitting::quit(before, means, *machine), Outcome::notTold);
            QCOMPARE(Quitting::gentlestMeans(*identity, *machine), Means::terminate); // it has no window
            QCOMPARE(Quitting::quit(*identity, Means::question, *machine), Outcome::notTold);
            QVERIFY(tail.runs());
            QCOMPARE(Quitting::quit(*identity, means, *machine), Outcome::ended);
            QVERIFY(tail.hasEnded());
        }
        const ProcessSample self = shownAs(::getpid(), u"quit_flow_test"_qs);
        QVERIFY(!Quitting::identify(self, *machine));
        QCOMPARE(Quitting::quit({::getpid(), machine->processControl->identify(::getpid())->started},
                                Means::kill, *machine),
                 Outcome::notTold);
    }

    void whatComesOfIt()
    {
        const QList<QByteArray> means = {"question", "terminate", "kill"};
        const QStringList outcomes = {u"told"_qs, u"ended"_qs, u"asked"_qs, u"runs on"_qs, u"not told"_qs};
        // Whether it can be asked, whether it is told then, how it is quit, and what it does.
        compareTable(fixture(u"flows/quit_outcomes.txt"_qs), [&](const Cells &row) {
            const Mac mac;
            const auto machine = mac.open();
            const Answers answers = {row[0], row[1] == "yes", row[3]};
            machine->runningApplications = std::make_unique<Asker>(answers);
            machine->processControl = std::make_unique<Ender>(answers);
            const auto way = static_cast<Means>(means.indexOf(row[2]));
            return outcomes[static_cast<int>(Quitting::quit({50, 1}, way, *machine))];
        });
    }

    void whatIsAskedAgainIsToldMoreFirmly()
    {
        const Mac mac({{u"now"_qs, 1'790'000'000}});
        const auto machine = mac.open();
        AppState state(machine, Record::nothing);
        const Answers answers = {"yes", true, "goes on"};
        machine->runningApplications = std::make_unique<Asker>(answers);
        machine->processControl = std::make_unique<Ender>(answers);
        QuitFlow flow(state);
        const QSignalSpy finished(&flow, &QuitFlow::finished);
        const ProcessSample mill = shownAs(50, u"Mill"_qs);
        QStringList questions;
        for (const double later : {0, 1, 119}) {
            machine->clock->advance(later);
            QFuture<QuitPlan> plan = flow.plan(mill, Quitting::Force::no);
            plan.waitForFinished();
            questions += ConfirmationBuilder::quit(mill, plan.result(), flow).message.section(u". "_qs, 1);
            const qsizetype before = finished.size();
            flow.quit(mill, plan.result());
            QVERIFY(waitUntil([&] { return finished.size() > before; }));
        }
        QVERIFY(questions[0].startsWith(u"Quits cleanly"_qs) && questions[2] == questions[0]);
        QVERIFY(questions[1].startsWith(u"It was asked"_qs) && questions[1].contains(u"may be lost"_qs));
    }

    void aProgramThatIsGoneIsNotSignalled()
    {
        const auto machine = makeThisComputer();
        const pid_t child = ::fork();
        if (child == 0) {
            ::pause();
            ::_exit(0);
        }
        const auto identity = machine->processControl->identify(child);
        QVERIFY(identity && identity->started > 0);
        QCOMPARE(machine->processControl->endsWithin({}, *identity, {}), std::optional(false));
        QVERIFY(machine->processControl->signal(*identity, QuitSignal::kill));
        QVERIFY(*machine->processControl->endsWithin(std::chrono::minutes(1), *identity, {}));
        QVERIFY(!machine->processControl->identify(child)); // nobody has taken note of its end yet
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
        QVERIFY(!machine->processControl->identify(child));
        QVERIFY(!machine->processControl->signal(*identity, QuitSignal::kill));
        QCOMPARE(Quitting::quit(*identity, Means::terminate, *machine), Outcome::notTold);
    }
};

QTEST_GUILESS_MAIN(QuitFlowTest)
#include "QuitFlowTest.moc"
