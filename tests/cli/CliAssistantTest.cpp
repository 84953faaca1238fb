#include "Terminal.h"
#include "support/LoopbackServer.h"

#include <QtCore/QDirIterator>
#include <QtTest/QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace swabby;

namespace {

constexpr double noon = 1'790'000'000;
constexpr auto canary = "sk-canary-0123456789";

QJsonObject facts()
{
    return {{u"now"_qs, noon}, {u"disk"_qs, QJsonObject{{u"freeBytes"_qs, 400}, {u"totalBytes"_qs, 1000}}}};
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The files of the folder that hold the text, but for those of the program's own store.
QStringList filesWith(const QString &folder, const QByteArray &text)
{
    QStringList found;
    for (QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
         files.hasNext();)
        if (contentOf(files.next()).contains(text))
            found.append(files.filePath().mid(folder.size() + 1));
    return found;
}

} // namespace

class CliAssistantTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qunsetenv("ANTHROPIC_API_KEY");
        useServer(nullptr);
    }

    void askAndExplainPrintTheAnswer()
    {
        const QJsonObject grinding = {{u"appToQuit"_qs, u"Mill"_qs},
                                      {u"explanation"_qs, u"It grinds.\n\u001b[31mRed"_qs}};
        const QString reply = QString::fromUtf8(QJsonDocument(grinding).toJson());
        LoopbackServer server(always(httpAnswer(200, modelReply(reply))));
        useServer(&server);
        TemporaryMachine machine(facts());
        machine.setProcesses({"10 1 95.5 60.0 100 /Applications/Mill.app/Contents/MacOS/Mill"});
        machine.writeFile(u"home/Library/LaunchAgents/com.mill.plist"_qs,
                          "<plist version=\"1.0\"><dict><key>Label</key><string>com.mill</string>"
                          "<key>Program</key><string>/gone</string></dict></plist>");
        Answer answer = runOn(machine, {u"ask"_qs, u"  Why so slow? "_qs, u"--json"_qs});
        QCOMPARE(answer.status, 0);
        QJsonObject whole = grinding;
        whole[u"failure"_qs] = QJsonValue::Null;
        QCOMPARE(answer.json().toObject(), whole);
        QVERIFY(answer.problems.contains("Sent to Claude to generate this answer."));
        const QString prompt = server.requests().last().prompt();
        QVERIFY(prompt.contains(
            u"Here's what's currently happening on the user's Mac:\nSpeed (CPU): 0% busy\n"_qs));
        QVERIFY(prompt.contains(u"\n\nThe user asked: \"Why so slow?\"\n\n"_qs));
        answer = runOn(machine, "ask Why?");
        QVERIFY(answer.output.startsWith("It grinds.\n") && !answer.output.contains("\033"));
        QCOMPARE(runOn(machine, {u"ask"_qs, u" \n "_qs}).status, 2);
        QCOMPARE(server.requests().size(), 2);

        answer = runOn(machine, "explain --pid 10 --json");
        QCOMPARE(answer.json()[u"recommendation"_qs], u"forceQuit"_qs);
        QCOMPARE(answer.json()[u"label"_qs], u"Recommended: Force Quit"_qs);
        QVERIFY(answer.json()[u"text"_qs].toString().contains(u"It grinds."_qs));
        QVERIFY(server.requests().last().prompt().contains(u"Current CPU usage: 95%"_qs));
        const QString id = runOn(machine, "startup --json").json()[0][u"id"_qs].toString();
        answer = runOn(machine, {u"explain"_qs, u"--item"_qs, id, u"--json"_qs});
        QCOMPARE(answer.json().toObject().keys(),
                 QStringList({u"failure"_qs, u"label"_qs, u"recommendation"_qs, u"text"_qs}));
        QVERIFY(
            server.requests().last().prompt().contains(u"label: com.mill\nProgram path: /gone\nNote: "_qs));

        for (const QStringList &rest :
             {QStringList{u"--pid"_qs, u"4711"_qs}, QStringList{u"--item"_qs, u"x"_qs}})
            QCOMPARE(runOn(machine, QStringList{u"explain"_qs} + rest).status, 1);
        QCOMPARE(runOn(machine, "explain").status, 2);
        QCOMPARE(server.requests().size(), 4);
        // Looking leaves no trace.
        QVERIFY(!QFile::exists(machine.historyFile()));
        QCOMPARE(machine.events(u"notification"_qs).size(), 0);
    }

    void withoutAProxyAKeyIsNamed()
    {
        TemporaryMachine machine(facts());
        const Answer answer = runOn(machine, "ask Why? --json");
        QCOMPARE(answer.status, 1);
        QCOMPARE(answer.json()[u"explanation"_qs], u"Couldn't come up with an answer right now."_qs);
        QCOMPARE(answer.json()[u"failure"_qs], u"noAssistant"_qs);
        QVERIFY(answer.problems.contains("swabbyctl key set") && !answer.problems.contains("Sent to"));
    }

    void theKeyIsKeptAsItIsGiven()
    {
        LoopbackServer server(always(httpAnswer(500, {})));
        useServer(&server);
        TemporaryMachine machine(facts());
        const auto isStored = [&] { return runOn(machine, "key status --json").json()[u"stored"_qs]; };
        QCOMPARE(isStored(), false);
        for (const auto &[input, sent] : {std::pair<QByteArray, QByteArray>("sk-a", "sk-a"),
                                          {"sk-b\n", "sk-b"},
                                          {"sk-c\r\n", "sk-c"},
                                          {"s k\td\n", "s k\td"}}) {
            const Answer set = runOn(machine, "key set --json", input);
            QCOMPARE(set.status, 0);
            QCOMPARE(set.json().toObject(), (QJsonObject{{u"stored"_qs, true}}));
            QCOMPARE(isStored(), true);
            runOn(machine, "ask Why?");
            QCOMPARE(server.requests().last().headers.value("x-api-key"), sent);
        }
        QCOMPARE(runOn(machine, "key set", "\xff\xfe").status, 2);
        QCOMPARE(runOn(machine, "key frob").status, 2);
        QCOMPARE(isStored(), true);
        QCOMPARE(runOn(machine, "key delete --json").json()[u"stored"_qs], false);
        QCOMPARE(runOn(machine, "key delete").status, 0);
        runOn(machine, "ask Why?");
        QVERIFY(!server.requests().last().headers.contains("x-api-key"));
    }

    void withoutABusNoKeyIsKept()
    {
        // No library may start a bus of its own either: it would inherit the environment.
        const TemporaryMachine home;
        home.addTool(u"/dbus-launch"_qs, "echo started >\"$HOME/started\"");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *place : {"HOME", "XDG_RUNTIME_DIR", "XDG_DATA_HOME", "XDG_CONFIG_HOME"})
            environment.insert(QLatin1String(place), home.folder());
        environment.insert(u"PATH"_qs, home.folder() + u"/root:/usr/bin:/bin"_qs);
        environment.insert(u"DISPLAY"_qs, u":4711"_qs);
        for (const bool hasAddress : {true, false}) {
            environment.remove(u"DBUS_SESSION_BUS_ADDRESS"_qs);
            if (hasAddress)
                environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_qs, u"unix:path=/nowhere/bus"_qs);
            for (const auto &[verb, status] :
                 {std::pair("key status --json", 0), std::pair("key set --json", 1),
                  std::pair("key delete --json", 0)}) {
                const Answer answer = run(words(verb), canary, environment);
                QCOMPARE(answer.status, status);
                QCOMPARE(answer.json().toObject(), (QJsonObject{{u"stored"_qs, false}}));
            }
        }
        QVERIFY(!QFile::exists(home.folder() + u"/started"_qs));
        QCOMPARE(filesWith(home.folder(), canary), QStringList());
    }

    void watchPrintsWhatEachRefreshPosted()
    {
        LoopbackServer server(always(httpAnswer(200, modelReply(u"A fine week."_qs))));
        useServer(&server);
        QJsonObject busy = facts();
        busy[u"cpuTicks"_qs] = QJsonArray{QJsonArray{0, 0, 0, 0}, QJsonArray{90, 5, 5, 0}};
        for (const bool isSnoozed : {false, true}) {
            TemporaryMachine machine(busy);
            machine.setProcesses({"10 1 30.5 60.0 100 /opt/mill"});
            QStringList arguments = {u"watch"_qs, u"--json"_qs,     u"--refreshes"_qs,
                                     u"4"_qs,     u"--interval"_qs, u"302400"_qs};
            if (isSnoozed)
                arguments += {u"--snooze"_qs, u"2000000"_qs};
            const QJsonArray lines = runOn(machine, arguments).lines();
            QCOMPARE(lines.size(), 4);
            QStringList titles;
            for (const QJsonValue line : lines)
                titles.append(line[u"notifications"_qs].toArray().isEmpty()
                                  ? u"none"_qs
                                  : line[u"notifications"_qs][0][u"body"_qs].toString());
            const QString red = u"mill is using 30% of your Mac's power right now."_qs;
            QCOMPARE(titles,
                     QStringList({u"none"_qs, isSnoozed ? u"none"_qs : red, u"A fine week."_qs, u"none"_qs}));
            QCOMPARE(machine.events(u"notification"_qs).size(), isSnoozed ? 1 : 2);
            QVERIFY(server.requests().last().prompt().contains(u" caught 1 thing that "_qs));
        }
    }

    void theKeyIsNowhereElse()
    {
        // Answers with whatever it was sent, so that a header would show.
        LoopbackServer server(always(httpAnswer(200, modelReply(u"Fine."_qs))));
        useServer(&server);
        for (const bool isStored : {true, false}) {
            QJsonObject busy = facts();
            busy[u"cpuTicks"_qs] = QJsonArray{QJsonArray{0, 0, 0, 0}, QJsonArray{90, 5, 5, 0}};
            TemporaryMachine machine(busy);
            const QByteArray dump = "env >>\"$MACHINE_DIR/dump\"; tr '\\0' ' ' </proc/$PPID/cmdline "
                                    ">>\"$MACHINE_DIR/dump\"; echo \"$@\" >>\"$MACHINE_DIR/dump\"\n";
            for (const char *tool :
                 {"/usr/bin/top", "/usr/bin/nettop", "/bin/launchctl", "/usr/bin/osascript",
                  "/usr/bin/codesign", "/usr/sbin/system_profiler", "/usr/bin/pmset"})
                machine.addTool(QLatin1String(tool), dump);
            machine.addTool(u"/bin/ps"_qs, dump + "echo '10 1 30.5 60.0 100 /opt/mill'");
            machine.writeFile(
                u"home/Library/LaunchAgents/com.mill.plist"_qs,
                "<plist version=\"1.0\"><dict><key>Label</key><string>com.mill</string></dict></plist>");
            QByteArray said;
            const auto say = [&](const char *arguments, const QByteArray &input = {}) {
                const Answer answer = runOn(machine, arguments, input);
                QVERIFY2(answer.status >= 0, arguments);
                said += answer.output + answer.problems;
            };
            if (isStored)
                say("key set", canary);
            else
                qputenv("ANTHROPIC_API_KEY", canary);
            for (const char *line :
                 {"key status", "ask Why?", "ask Why? --json", "explain --pid 10", "snapshot --json",
                  "context", "settings", "watch --refreshes 4 --interval 302400 --json", "startup", "history",
                  "startup disable x"})
                say(line);
            QVERIFY(server.requests().size() >= 3);
            QCOMPARE(server.requests().last().headers.value("x-api-key"), canary);
            QVERIFY(!said.contains(canary));
            QVERIFY(contentOf(machine.folder() + u"/dump"_qs).contains("MACHINE_NOW"));
            const QStringList expected = isStored ? QStringList{u"keychain.json"_qs} : QStringList();
            QCOMPARE(filesWith(machine.folder(), canary), expected);
            if (isStored) {
                struct stat facts = {};
                QCOMPARE(::stat(qPrintable(machine.folder() + u"/keychain.json"_qs), &facts), 0);
                QCOMPARE(facts.st_mode & 0777, 0600u);
            }
        }
    }

    void aProcessWithTheKeyIsClosedToOthers()
    {
        // The files of a process that may not be dumped belong to root, whoever runs it; so it runs as
        // another.
        if (::geteuid() != 0)
            QSKIP("only root can run a program as somebody else");
        constexpr uid_t nobody = 65'534;
        TemporaryMachine machine(facts());
        machine.addTool(u"/bin/ps"_qs, "stat -c %u /proc/$PPID/environ >\"$MACHINE_DIR/owner\"");
        QCOMPARE(QProcess::execute(u"chown"_qs, {u"-R"_qs, QString::number(nobody), machine.folder()}), 0);
        for (const bool hasKey : {false, true}) {
            QProcess program;
            program.setChildProcessModifier([] {
                if (::setgid(nobody) != 0 || ::setuid(nobody) != 0)
                    ::_exit(1);
            });
            if (hasKey)
                qputenv("ANTHROPIC_API_KEY", canary);
            program.start(QStringLiteral(SWABBYCTL),
                          {u"--machine"_qs, machine.folder(), u"--run-tools"_qs, u"snapshot"_qs});
            QVERIFY(program.waitForFinished());
            if (program.exitCode() != 0 && !hasKey)
                QSKIP("somebody else cannot run the program from this folder");
            QCOMPARE(contentOf(machine.folder() + u"/owner"_qs).trimmed(),
                     hasKey ? QByteArray("0") : QByteArray::number(nobody));
        }
    }

private:
    static void useServer(const LoopbackServer *server)
    {
        for (const char *variable : {"SWABBY_AI_DIRECT_URL", "SWABBY_AI_PROXY_URL"})
            if (server)
                qputenv(variable, server->url().toEncoded());
            else
                qunsetenv(variable);
    }
};

QTEST_GUILESS_MAIN(CliAssistantTest)
#include "CliAssistantTest.moc"
