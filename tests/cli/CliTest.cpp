#include "Terminal.h"
#include "support/Table.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <unistd.h>

using namespace swabby;

namespace {

constexpr double noon = 1'790'000'000;

QJsonObject fixedFacts()
{
    return {{u"now"_qs, noon},
            {u"disk"_qs, QJsonObject{{u"freeBytes"_qs, 40}, {u"totalBytes"_qs, 1000}}},
            {u"powerSource"_qs, QJsonObject{{u"Current Capacity"_qs, 80}}}};
}

} // namespace

class CliTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wrongUsageSaysSoInOneLine()
    {
        TemporaryMachine machine(fixedFacts());
        compareTranscript(machine, u"cli/wrong_usage.txt"_qs);
        QVERIFY(!QFile::exists(machine.home() + u"/Library"_qs));
        machine.writeFile(u"machine.json"_qs, "{\"now\": ");
        QCOMPARE(runOn(machine, "snapshot").status, 2);
        QFile::remove(machine.folder() + u"/machine.json"_qs);
        const Answer answer = runOn(machine, "snapshot");
        QCOMPARE(answer.status, 2);
        QCOMPARE(answer.problems.count('\n'), 1);
    }

    void programsOfAFolderRunOnlyWhenTold()
    {
        TemporaryMachine machine(fixedFacts());
        machine.setProcesses({"10 1 95.5 60.0 100 /Applications/Mill.app/Contents/MacOS/Mill"});
        const Answer answer = run({u"--machine"_qs, machine.folder(), u"snapshot"_qs, u"--json"_qs});
        QCOMPARE(answer.json()[u"processes"_qs], QJsonArray());
        QVERIFY(answer.problems.contains("--run-tools") && answer.problems.count('\n') == 1);
        QCOMPARE(run(words("snapshot --run-tools")).status, 2);
    }

    void aStateHasEveryField()
    {
        TemporaryMachine machine(fixedFacts());
        machine.setProcesses({"10 1 95.5 60.0 100 /Applications/Mill.app/Contents/MacOS/Mill"});
        const QJsonObject state = runOn(machine, "snapshot --json").json().toObject();
        compareTable(fixture(u"cli/state_keys.txt"_qs), [&](const Cells &row) {
            QJsonValue value = state;
            for (const QString &key : words(row[0]))
                value = value[key].isArray() ? value[key][0] : value[key];
            return value.toObject().keys().join(u' ');
        });
        QVERIFY(state[u"stats"_qs][u"batteryHealthPercent"_qs].isNull());
        QCOMPARE(state[u"stats"_qs][u"timestamp"_qs], noon);
        const QJsonValue process = state[u"processes"_qs][0];
        QCOMPARE(process[u"trustRatio"_qs], 20);
        QCOMPARE(process[u"recommendation"_qs], u"forceQuit"_qs);
        const QJsonArray issues = state[u"healthIssues"_qs].toArray();
        QCOMPARE(issues.size(), 2);
        QCOMPARE(issues[0][u"action"_qs], (QJsonObject{{u"killProcess"_qs, 10}}));
        QCOMPARE(issues[1][u"action"_qs], (QJsonObject{{u"openSection"_qs, u"storage"_qs}}));
        QCOMPARE(state[u"menuBar"_qs], (QJsonObject{{u"text"_qs, u"0%"_qs}, {u"color"_qs, u"red"_qs}}));
        QVERIFY(!QFile::exists(machine.historyFile()));
    }

    void watchMovesTheFixedClockAndKeepsTheDay()
    {
        TemporaryMachine machine(fixedFacts());
        machine.addTool(u"/usr/bin/top"_qs, "echo $MACHINE_NOW >>\"$MACHINE_DIR/times\"");
        const Answer answer = runOn(machine, "watch --refreshes 3 --interval 600 --json");
        QCOMPARE(answer.status, 0);
        QList<double> times;
        for (const QByteArray &line : answer.output.trimmed().split('\n'))
            times.append(QJsonDocument::fromJson(line)[u"stats"_qs][u"timestamp"_qs].toDouble());
        QCOMPARE(times, QList<double>({noon, noon + 600, noon + 1200}));
        QFile seen(machine.folder() + u"/times"_qs);
        QVERIFY(seen.open(QIODevice::ReadOnly));
        QCOMPARE(seen.readAll(), QByteArray("1790000000\n1790000600\n1790001200\n"));
        // On a described machine that has moved on, the stored points still are the day's.
        QCOMPARE(runOn(machine, "history --json").json().toArray().size(), 3);
        QCOMPARE(runOn(machine, "settings weeklyAttentionCount").output, QByteArray("1\n"));
        // What cannot be stored is said, and not at every refresh.
        QVERIFY(QDir(QFileInfo(machine.historyFile()).path()).removeRecursively());
        machine.writeFile(u"home/Library/Application Support/Swabby"_qs, "in the way");
        QCOMPARE(runOn(machine, "watch --refreshes 3").problems.count("could not be stored"), 1);
    }

    void timesAreShownInThePersonsLocale()
    {
        TemporaryMachine machine(fixedFacts());
        // Tools still print what is parsed.
        machine.addTool(u"/usr/bin/top"_qs, "echo \"$LC_ALL|$LC_TIME|$LC_NUMERIC\" >\"$MACHINE_DIR/locale\"");
        const QStringList onIt = {u"--machine"_qs, machine.folder(), u"--run-tools"_qs};
        // LC_ALL, LC_TIME and LANG.
        compareTable(fixture(u"cli/times.txt"_qs), [&](const Cells &row) {
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert(u"TZ"_qs, u"UTC"_qs);
            environment.insert(u"LC_ALL"_qs, row.text(0));
            environment.insert(u"LC_TIME"_qs, row.text(1));
            environment.insert(u"LANG"_qs, row.text(2));
            const QByteArray shown = row[3], time = shown.mid(shown.indexOf(':') - 2).trimmed();
            const QByteArray watched = run(onIt + words("watch --refreshes 1"), {}, environment).output;
            const QByteArray history = run(onIt + words("history"), {}, environment).output;
            return watched.trimmed().startsWith(time) && history.contains(shown)
                       ? row.text(3)
                       : QString::fromUtf8(watched + history);
        });
        QFile seen(machine.folder() + u"/locale"_qs);
        QVERIFY(seen.open(QIODevice::ReadOnly));
        QCOMPARE(seen.readAll(), QByteArray("|C|C\n"));
    }

    void settingsRoundTrip()
    {
        TemporaryMachine machine(fixedFacts());
        compareTranscript(machine, u"cli/settings.txt"_qs);
        const QJsonObject all = runOn(machine, "settings --json").json().toObject();
        QVERIFY(all[u"cpuRed"_qs] == 0 && all[u"hasCompletedOnboarding"_qs] == false);
        QVERIFY(all.contains(u"weeklyBytesFreed"_qs));
        // What could not be written is said.
        QVERIFY(QDir(machine.home() + u"/Library"_qs).removeRecursively());
        machine.writeFile(u"home/Library"_qs, "a file in the way");
        const Answer refused = runOn(machine, "settings cpuRed 5");
        QVERIFY(refused.status == 1 && refused.output == "85\n");
        QCOMPARE(refused.problems, QByteArray("swabbyctl: the settings could not be written\n"));
    }

    void rootLeavesAnotherPersonsHomeAlone()
    {
        const QTemporaryDir home;
        if (::geteuid() != 0 || ::chown(qPrintable(home.path()), 65'534, 65'534) != 0)
            QSKIP("root only");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_qs, home.path());
        for (const char *folder : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            environment.remove(QLatin1String(folder));
        for (const char *verb :
             {"settings cpuRed 5", "settings cpuRed --unset", "pin x", "remove docker-prune --yes",
              "put-back", "startup disable x", "key delete", "watch --refreshes 1"}) {
            const Answer answer = run(words(verb), {}, environment);
            QVERIFY2(answer.status == 1 && answer.output.isEmpty() && answer.problems.count('\n') == 1, verb);
            QVERIFY(answer.problems.contains(home.path().toUtf8()));
        }
        QCOMPARE(run(words("settings cpuRed"), {}, environment).output, QByteArray("85\n"));
        QVERIFY(QDir(home.path()).isEmpty());
    }

    void aBadToolGivesTheNeutralValue()
    {
        // Missing, silent, failing, killed, twenty megabytes, not UTF-8, half a line, huge figures.
        for (const char *script :
             {"", "exit 0", "echo no >&2; exit 1", "printf '  PID  PPID  %%CPU'; kill -9 $$",
              "yes '1 2 3 nonsense, of.all kinds = ;' | head -c 20000000",
              R"(printf '1 2 3.0 4.0 5 na\377me\nPID COMMAND POWER\n1 a 2\n')", "printf '10 1 5.0 6'",
              "echo '99999999999 1 1e999 nan 99999999999999999999 x'"}) {
            TemporaryMachine machine(fixedFacts());
            machine.writeFile(
                u"home/Library/LaunchAgents/a.plist"_qs,
                "<plist><dict><key>Label</key><string>a</string><key>Program</key><string>/x</string>"
                "</dict></plist>");
            for (const char *tool : {"/bin/ps", "/usr/bin/top", "/usr/bin/nettop", "/usr/sbin/sysctl",
                                     "/usr/sbin/system_profiler", "/bin/launchctl", "/usr/bin/codesign"})
                if (*script)
                    machine.addTool(QString::fromLatin1(tool), script);
            const Answer answer = runOn(machine, "snapshot --json");
            QVERIFY2(answer.status == 0 && answer.problems.isEmpty(), script);
            const QJsonObject state = answer.json().toObject();
            for (const char *list : {"processes", "batteryDrainers", "networkUsers", "browserRollups"})
                QCOMPARE(state[QLatin1String(list)].toArray(), QJsonArray());
            QVERIFY(state[u"stats"_qs][u"batteryCycleCount"_qs].isNull());
            QCOMPARE(state[u"loginItems"_qs][0][u"id"_qs], u"Runs in the background:a"_qs);
            QCOMPARE(state[u"loginItems"_qs][0][u"isAppleSigned"_qs], false);
            QCOMPARE(state[u"health"_qs], u"red"_qs);
        }
    }

    void aKillDuringASaveLeavesAWholeFileAndNoStrays()
    {
        TemporaryMachine machine(fixedFacts());
        QVERIFY(runOn(machine, "watch --refreshes 1 --json").status == 0);
        const QDir data(QFileInfo(machine.historyFile()).absolutePath());
        for (int kill = 0; kill < 60; ++kill) {
            QProcess program;
            program.start(QStringLiteral(SWABBYCTL),
                          QStringList{u"--machine"_qs, machine.folder(), u"--run-tools"_qs} +
                              words("watch --interval 1 --json"));
            // Each round dies a little later in its flood of saves.
            qsizetype seen = 0;
            while (seen < 1 + kill && program.waitForReadyRead())
                seen += program.readAll().count('\n');
            program.kill();
            QVERIFY(program.waitForFinished());
            QFile history(machine.historyFile());
            QVERIFY(history.open(QIODevice::ReadOnly));
            const QJsonDocument stored = QJsonDocument::fromJson(history.readAll());
            QVERIFY(stored.isArray());
            QVERIFY(!stored.array().isEmpty());
        }
        QCOMPARE(runOn(machine, "history --json").status, 0);
        QCOMPARE(data.entryList(QDir::Files | QDir::Hidden), QStringList{u"history.json"_qs});
    }
};

QTEST_GUILESS_MAIN(CliTest)
#include "CliTest.moc"
