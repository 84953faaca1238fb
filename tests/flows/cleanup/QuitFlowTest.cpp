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

namespace {

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
    auto identity = flow.identify(mill);
    identity.waitForFinished();
    change("asked");
    flow.quit(mill, identity, isForced ? Quitting::Force::yes : Quitting::Force::no);
    waitUntil([&] { return !finished.isEmpty(); });
    const bool wasTold = !mac.effects().isEmpty();
    if (finished.value(0) != QVariantList{50, wasTold} ||
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
            for (const auto force : {Quitting::Force::no, Quitting::Force::yes})
                QVERIFY(!Quitting::quit({pid, 0}, force, *machine));
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
        const auto machine = makeThisComputer();
        AppState state(machine, Record::nothing);
        QuitFlow flow(state);
        // Nobody here can ask an application to quit, which is no promise that it saves.
        QVERIFY(ConfirmationBuilder::quit(shownAs(50, u"Mill"_qs), Quitting::Force::no, flow)
                    .message.contains(u"may be lost"_qs));
        for (const auto force : {Quitting::Force::no, Quitting::Force::yes}) {
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
            QVERIFY(!Quitting::quit(before, force, *machine));
            QVERIFY(tail.runs());
            QVERIFY(Quitting::quit(*identity, force, *machine));
            QVERIFY(tail.hasEnded());
        }
        const ProcessSample self = shownAs(::getpid(), u"quit_flow_test"_qs);
        QVERIFY(!Quitting::identify(self, *machine));
        QVERIFY(!Quitting::quit({::getpid(), machine->processControl->identify(::getpid())->started},
                                Quitting::Force::yes, *machine));
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
        QVERIFY(machine->processControl->signal(*identity, QuitSignal::kill));
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
        QVERIFY(!machine->processControl->identify(child));
        QVERIFY(!machine->processControl->signal(*identity, QuitSignal::kill));
        QVERIFY(!Quitting::quit(*identity, Quitting::Force::no, *machine));
    }
};

QTEST_GUILESS_MAIN(QuitFlowTest)
#include "QuitFlowTest.moc"
