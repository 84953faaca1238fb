#include "flows/health/FullCheck.h"
#include "cleanup/FullMac.h"
#include "support/LoopbackServer.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <csignal>

using namespace swabby;

namespace {

/// A check on a Mac, without a way to the model unless one is given.
struct Scene {
    explicit Scene(const Clutter &mac, const ModelAddresses &addresses = {})
        : state(mac.open(), Record::nothing),
          ai(state.sharedMachine(), addresses),
          check(std::make_unique<FullCheck>(state, ai)),
          finished(check.get(), &FullCheck::finished)
    {
    }

    bool run()
    {
        check->run();
        return waitUntil([&] { return !finished.isEmpty(); });
    }
    QStringList candidates() const
    {
        QStringList ids;
        for (const RemovableItem &item : check->result().removalCandidates)
            ids.append(item.id);
        return ids;
    }

    AppState state;
    CloudAI ai;
    std::unique_ptr<FullCheck> check;
    QSignalSpy finished;
};

void refreshOnce(AppState &state)
{
    state.refresh();
    QVERIFY(waitUntil([&] { return state.refreshesApplied() == 1; }));
}

/// A tool that hangs, and tells its process id first.
const QByteArray hanging = R"(echo $$ >"$MACHINE_DIR/pid.new"; mv "$MACHINE_DIR/pid.new" "$MACHINE_DIR/pid"
exec tail -f /dev/null)";

/// The process id of a hanging tool; 0 when there is none yet.
int hangingPid(const TemporaryMachine &mac)
{
    QFile file(mac.folder() + u"/pid"_qs);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toInt() : 0;
}

bool isGone(int pid)
{
    return ::kill(pid, 0) != 0;
}

} // namespace

class FullCheckTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { qunsetenv("ANTHROPIC_API_KEY"); }

    void theStepsTickInTheirOrder()
    {
        const FullMac mac;
        mac.addTool(u"/usr/bin/du"_qs, R"(case "$2" in */pip) read -r line <"$MACHINE_DIR/gate";; esac
printf '5000\t%s\n' "$2")");
        QCOMPARE(::mkfifo(qPrintable(mac.folder() + u"/gate"_qs), 0600), 0);
        mac.addTool(u"/usr/bin/xcrun"_qs, R"(echo {}; : >"$MACHINE_DIR/simulators")");
        mac.addTool(u"/usr/local/bin/docker"_qs, R"(: >"$MACHINE_DIR/docker")");
        Scene scene(mac);
        QSignalSpy steps(scene.check.get(), &FullCheck::stepCompleted);
        scene.check->run();
        QVERIFY(scene.state.isScanning() && scene.check->phase() == FullCheck::Phase::scanning);
        QVERIFY(waitUntil([&] {
            return QFile::exists(mac.folder() + u"/simulators"_qs) &&
                   QFile::exists(mac.folder() + u"/docker"_qs);
        }));
        QCOMPARE(steps.size(), 0);
        QFile gate(mac.folder() + u"/gate"_qs);
        QVERIFY(gate.open(QIODevice::WriteOnly) && gate.write("on\n") == 3);
        gate.close();
        QVERIFY(waitUntil([&] { return !scene.finished.isEmpty(); }));
        QCOMPARE(scene.check->completedSteps(), FullCheck::steps());
        QCOMPARE(
            FullCheck::steps(),
            QStringList({u"Checking storage"_qs, u"Checking startup items"_qs, u"Checking running apps"_qs,
                         u"Looking for duplicate files"_qs, u"Checking developer clutter"_qs}));
        for (qsizetype step = 0; step < steps.size(); ++step)
            QCOMPARE(steps[step].first().toString(), FullCheck::steps()[step]);
        QVERIFY(!scene.state.isScanning() && scene.check->phase() == FullCheck::Phase::done);
        QCOMPARE(scene.state.lastScan(), std::optional(double(Clutter::now)));
    }

    void onlyCountsSizesAndNamesAreSent()
    {
        const FullMac mac;
        mac.addFolder(u"Library/Caches/nearly"_qs, 24'000);
        mac.addFolder(u"Library/Caches/broken"_qs, 23'000);
        mac.setProcesses({"50 1 90 1 9 /opt/secret/Mill"});
        mac.writeFile(u"home/Library/LaunchAgents/a.plist"_qs,
                      "<plist><dict><key>Label</key><string>hidden.label</string><key>Program</key>"
                      "<string>/x</string></dict></plist>");
        const LoopbackServer server([](QTcpSocket &socket, const HttpRequest &request) {
            const QString prompt = request.prompt();
            const QString reply =
                prompt.contains(u"org.example.loom"_qs)
                    ? u"```json\n{\"looksSafe\": true, \"reason\": \"r\"}\n```"_qs
                : prompt.contains(u"\"odd\""_qs)    ? u"{\"looksSafe\": false, \"reason\": \"r\"}"_qs
                : prompt.contains(u"\"nearly\""_qs) ? u"{\"looksSafe\": \"true\", \"reason\": \"r\"}"_qs
                : prompt.contains(u"\"broken\""_qs) ? u"It looks safe to me."_qs
                                                    : u"{\"headline\": \"H\", \"summary\": \"S\"}"_qs;
            always(httpAnswer(200, modelReply(reply)))(socket, request);
        });
        Scene scene(mac, {.direct = server.url(), .proxy = server.url()});
        refreshOnce(scene.state);
        QVERIFY(scene.run());
        const auto ids = mac.allIds();
        QCOMPARE(scene.candidates(), QStringList({ids[0], ids[3], ids[4], ids[5], ids[6], ids[1]}));
        QCOMPARE(scene.check->result().headline, u"H"_qs);
        QCOMPARE(scene.check->result().summary, u"S"_qs);
        QCOMPARE(scene.check->result().findings(), 8);

        const QList<HttpRequest> requests = server.requests();
        QCOMPARE(requests.size(), 5);
        const char *names[] = {"org.example.loom", "odd", "nearly", "broken"}; // the largest first
        for (int number = 0; number < 4; ++number)
            QVERIFY(requests[number].prompt().startsWith(
                u"There's a folder called \"%1\" inside"_qs.arg(QLatin1String(names[number]))));
        QVERIFY(requests[4].prompt().endsWith(
            u"\n- 6 things worth cleaning up, about 8.24 GB total\n- Mill is using a lot of "
            "power right now\n- 1 startup item worth a second look"_qs));
        for (const HttpRequest &request : requests)
            for (const QString &word :
                 {mac.folder(), u"report"_qs, u"setup"_qs, u"secret"_qs, u"hidden"_qs, u"4B0E"_qs})
                QVERIFY2(!QString::fromUtf8(request.body).contains(word), qPrintable(word));
    }

    void nothingToReport()
    {
        const Clutter mac;
        Scene scene(mac);
        QVERIFY(scene.run());
        const SwabbyCheckResult &result = scene.check->result();
        QCOMPARE(result.findings(), 0);
        QCOMPARE(result.headline, u"Everything looks tidy"_qs);
        QCOMPARE(result.summary, u"Nothing needs your attention right now."_qs);
        QVERIFY(!result.wasSent);
    }

    void withoutTheModelNothingIsTakenOnTrust()
    {
        const FullMac mac;
        mac.addTool(u"/usr/local/bin/docker"_qs, "printf 'Images\\t0B\\n'");
        mac.addFolder(u"Library/Developer/Xcode/DerivedData"_qs, 0);
        Scene scene(mac);
        QVERIFY(scene.run());
        const auto ids = mac.allIds();
        // Nothing to reclaim is still Docker's to offer, an empty build cache is not.
        QCOMPARE(scene.candidates(), QStringList({ids[0], ids[3], ids[4], ids[6]}));
        QCOMPARE(scene.check->result().removalCandidates.back().sizeBytes, 0);
        QCOMPARE(scene.check->result().headline, u"A few things worth doing"_qs);
    }

    void theProgramToWatch()
    {
        const auto watched = [](const QList<QByteArray> &cpus, const QJsonValue &stored) {
            const TemporaryMachine folder;
            QList<QByteArray> rows;
            for (qsizetype row = 0; row < cpus.size(); ++row)
                rows.append(QByteArray::number(100 + row) + " 1 " + cpus[row] + " 0 9 /opt/mill");
            rows.append("300 1 0 0 9 /opt/small");
            folder.setProcesses(rows);
            if (!cpus.isEmpty())
                folder.addTool(u"/usr/bin/top"_qs,
                               "printf 'PID COMMAND POWER\\n1 a 1\\nPID COMMAND POWER\\n300 x 1\\n'");
            AppState state(folder.open(), Record::nothing);
            refreshOnce(state);
            const auto process = processToWatch(state, stored);
            return process ? process->pid : 0;
        };
        const QJsonValue none = QJsonValue::Undefined;
        QCOMPARE(watched({"90", "56.0", "55.9"}, none), 100);
        QCOMPARE(watched({"56.0"}, none), 100);
        QCOMPARE(watched({"55.9"}, none), 300);
        QCOMPARE(watched({"35.0"}, 50), 100);
        QCOMPARE(watched({"34.9"}, 50), 300);
        QCOMPARE(watched({"55.9"}, u"50"_qs), 300);
        QCOMPARE(watched({"56.0"}, true), 100);
        QCOMPARE(watched({}, none), 0);
    }

    void startupItemsToReview()
    {
        QStringList reviewed;
        QList<LoginItem> items;
        for (int bits = 0; bits < 8; ++bits) {
            LoginItem item;
            item.label = QString::number(bits);
            item.isOrphaned = (bits & 4) != 0;
            item.isAppleSigned = (bits & 2) != 0;
            item.canDisableInPlace = (bits & 1) != 0;
            items.append(item);
        }
        for (const LoginItem &item : loginItemsToReview(items))
            reviewed.append(item.label);
        QCOMPARE(reviewed, QStringList({u"1"_qs, u"5"_qs, u"7"_qs}));
    }

    void badToolsSpoilOnlyTheirOwn_data()
    {
        QTest::addColumn<QString>("tool");
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QList<int>>("offered");
        for (const auto &[tool, offered] : {std::pair{u"/usr/bin/du"_qs, QList<int>{3, 4, 6}},
                                            {u"/usr/bin/xcrun"_qs, QList<int>{0, 3, 5, 6}},
                                            {u"/usr/local/bin/docker"_qs, QList<int>{0, 3, 4, 5}}})
            for (const auto &[what, script] : {std::pair{"missing", ""},
                                               {"garbage", "printf 'x\\377\\0\\t['"},
                                               {"failing", "exit 3"},
                                               {"100 MB", "head -c 100000000 /dev/zero | tr '\\0' 'x'"}})
                QTest::addRow("%s %s", qPrintable(tool), what) << tool << QByteArray(script) << offered;
    }

    void badToolsSpoilOnlyTheirOwn()
    {
        QFETCH(QString, tool);
        QFETCH(QByteArray, script);
        QFETCH(QList<int>, offered);
        const FullMac mac;
        if (script.isEmpty())
            QFile::remove(mac.folder() + u"/root"_qs + tool);
        else
            mac.addTool(tool, script);
        Scene scene(mac);
        QVERIFY(scene.run());
        QStringList expected;
        for (const int number : offered)
            expected.append(mac.allIds()[number]);
        QCOMPARE(scene.candidates(), expected);
        QCOMPARE(scene.check->completedSteps(), FullCheck::steps());
    }

    void aHungToolCanBeLeft_data()
    {
        QTest::addColumn<QString>("tool");
        QTest::addColumn<int>("steps");
        QTest::addColumn<QString>("leaving");
        for (const char *leaving : {"cancel", "again", "destroy"}) {
            QTest::addRow("du, %s", leaving) << u"/usr/bin/du"_qs << 0 << QString::fromLatin1(leaving);
            QTest::addRow("docker, %s", leaving)
                << u"/usr/local/bin/docker"_qs << 4 << QString::fromLatin1(leaving);
        }
    }

    void aHungToolCanBeLeft()
    {
        QFETCH(QString, tool);
        QFETCH(int, steps);
        QFETCH(QString, leaving);
        const FullMac mac;
        mac.addTool(tool, hanging);
        Scene scene(mac);
        scene.check->run();
        QVERIFY(
            waitUntil([&] { return hangingPid(mac) > 0 && scene.check->completedSteps().size() == steps; }));
        const int pid = hangingPid(mac);
        QVERIFY(!isGone(pid));
        if (leaving == u"destroy"_qs) {
            scene.check.reset();
            QVERIFY(isGone(pid));
            QVERIFY(!scene.state.isScanning());
            QCoreApplication::processEvents(); // what the scans gave comes for nobody
            return;
        }
        if (leaving == u"cancel"_qs) {
            scene.check->cancel();
            QVERIFY(!scene.state.isScanning() && scene.check->phase() == FullCheck::Phase::done);
            QVERIFY(waitUntil([&] { return isGone(pid); }));
            QVERIFY(scene.candidates().isEmpty() && !scene.state.lastScan());
        }
        const FullMac healthy;
        QFile::remove(mac.folder() + u"/root"_qs + tool);
        QVERIFY(QFile::copy(healthy.folder() + u"/root"_qs + tool, mac.folder() + u"/root"_qs + tool));
        QVERIFY(scene.run());
        QVERIFY(waitUntil([&] { return isGone(pid); }));
        QCOMPARE(scene.check->completedSteps(), FullCheck::steps());
        QCOMPARE(scene.candidates().size(), 5);
        QCOMPARE(scene.finished.size(), 1);
    }

    void whatIsTickedIsRemoved()
    {
        const FullMac mac;
        Scene scene(mac);
        FullCheck &check = *scene.check;
        QVERIFY(scene.run());
        const QStringList ids = scene.candidates();
        QCOMPARE(check.selectedItems().size(), std::size_t(5));
        QCOMPARE(check.removeLabel(), u"Remove Everything"_qs);
        check.setSelected(ids[1], false);
        check.setSelected(ids[3], false);
        QCOMPARE(check.removeLabel(), u"Remove 3 Items"_qs);
        QCOMPARE(check.selectedItems()[1].id, ids[2]);
        const auto removed = check.selectedItems();
        check.forget({removed[0], removed[1]});
        QCOMPARE(scene.candidates(), QStringList({ids[1], ids[3], ids[4]}));
        QCOMPARE(check.removeLabel(), u"Remove 1 Items"_qs);
        check.setSelected(ids[4], false);
        QVERIFY(check.selectedItems().empty());
        QCOMPARE(check.removeLabel(), u"Remove 0 Items"_qs);
        check.dismiss(u"an item"_qs);
        QCOMPARE(check.dismissedLoginItemIDs(), std::set{u"an item"_qs});
        scene.finished.clear();
        QVERIFY(scene.run());
        QVERIFY(check.dismissedLoginItemIDs().empty());
        QCOMPARE(check.removeLabel(), u"Remove Everything"_qs);
    }
};

QTEST_GUILESS_MAIN(FullCheckTest)
#include "FullCheckTest.moc"
