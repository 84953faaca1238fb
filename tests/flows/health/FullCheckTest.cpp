#include "flows/health/FullCheck.h"
#include "cleanup/FullMac.h"
#include "support/LoopbackServer.h"
#include "support/Table.h"

#include <QtCore/QJsonDocument>
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

    void noResultWhenNothingIsSearched()
    {
        const FullMac mac;
        mac.writeFile(u"home/Library/Preferences/com.swabby.app.json"_qs, "{\"neverRemove\": null}");
        Scene scene(mac);
        QVERIFY(scene.run());
        const SwabbyCheckResult &result = scene.check->result();
        QVERIFY(result.problem.startsWith(u"neverRemove in "_qs) && result.headline.isEmpty());
        QVERIFY(scene.check->completedSteps().isEmpty() && !scene.state.lastScan());
    }

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
            QString reply = u"{\"headline\": \"H\", \"summary\": \"S\"}"_qs;
            for (const auto &[name, answer] :
                 {std::pair{"org.example.loom", "```json\n{\"looksSafe\": true, \"reason\": \"r\"}\n```"},
                  {"\"odd\"", "{\"looksSafe\": false, \"reason\": \"r\"}"},
                  {"\"nearly\"", "{\"looksSafe\": \"true\", \"reason\": \"r\"}"},
                  {"\"broken\"", "It looks safe to me."}})
                if (request.prompt().contains(QLatin1String(name)))
                    reply = QLatin1String(answer);
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

    void withoutTheModelNothingIsTakenOnTrust()
    {
        const FullMac mac;
        mac.addTool(u"/usr/local/bin/docker"_qs, "printf 'Images\\t0B\\n'");
        mac.addFolder(u"Library/Developer/Xcode/DerivedData"_qs, 0);
        Scene scene(mac);
        for (KnownCache &known : scene.state.machine().cleanup.knownCaches)
            known.isBuildTool = true;
        QVERIFY(scene.run());
        const auto ids = mac.allIds();
        // What developers' tools would fetch again is chosen by them.
        QCOMPARE(scene.check->selectedRemovalIDs(), (std::set<QString>{ids[3], ids[4], ids[6]}));
        // Nothing to reclaim is still Docker's to offer, an empty build cache is not.
        QCOMPARE(scene.candidates(), QStringList({ids[0], ids[3], ids[4], ids[6]}));
        QCOMPARE(scene.check->result().removalCandidates.back().sizeBytes, 0);
        QCOMPARE(scene.check->result().headline, u"A few things worth doing"_qs);

        const Clutter tidy;
        Scene nothing(tidy);
        QVERIFY(nothing.run());
        QCOMPARE(nothing.check->result().findings(), 0);
        QCOMPARE(nothing.check->result().headline, u"Everything looks tidy"_qs);
        QVERIFY(!nothing.check->result().wasSent);
    }

    void theProgramToWatch()
    {
        // The loads from 100 on, beside an idle 300 that drains the battery, and the threshold that is
        // stored.
        compareTable(fixture(u"flows/program_to_watch.txt"_qs), [](const Cells &row) {
            const TemporaryMachine folder;
            QList<QByteArray> programs = {"300 1 0 0 9 /opt/small"};
            for (const QByteArray &load : row[0].isEmpty() ? QByteArrayList() : row[0].split(' '))
                programs.append(QByteArray::number(99 + programs.size()) + " 1 " + load + " 0 9 /opt/mill");
            folder.setProcesses(programs);
            if (programs.size() > 1)
                folder.addTool(u"/usr/bin/top"_qs,
                               "printf 'PID COMMAND POWER\\n1 a 1\\nPID COMMAND POWER\\n300 x 1\\n'");
            AppState state(folder.open(), Record::nothing);
            refreshOnce(state);
            const auto process = processToWatch(state, QJsonDocument::fromJson(row[1]).array().at(0));
            return QString::number(process ? process->pid : 0);
        });
    }

    void startupItemsToReview()
    {
        QString reviewed;
        QList<LoginItem> items(8);
        for (int bits = 0; bits < 8; ++bits) {
            items[bits].label = QString::number(bits);
            items[bits].isOrphaned = (bits & 4) != 0;
            items[bits].isAppleSigned = (bits & 2) != 0;
            items[bits].canDisableInPlace = (bits & 1) != 0;
        }
        for (const LoginItem &item : loginItemsToReview(items))
            reviewed += item.label;
        QCOMPARE(reviewed, u"157"_qs);
    }

    void badToolsSpoilOnlyTheirOwn()
    {
        for (const auto &[tool, offered] : {std::pair{u"/usr/bin/du"_qs, QList{3, 4, 6}},
                                            {u"/usr/bin/xcrun"_qs, QList{0, 3, 5, 6}},
                                            {u"/usr/local/bin/docker"_qs, QList{0, 3, 4, 5}}})
            for (const QByteArray script :
                 {"", "printf 'x\\377\\0\\t['", "exit 3", "head -c 100000000 /dev/zero | tr '\\0' 'x'"}) {
                const FullMac mac;
                if (script.isEmpty())
                    QFile::remove(mac.folder() + u"/root"_qs + tool);
                else
                    mac.addTool(tool, script);
                Scene scene(mac);
                QVERIFY2(scene.run(), script);
                QStringList expected;
                for (const int number : offered)
                    expected.append(mac.allIds()[number]);
                QCOMPARE(scene.candidates(), expected);
                QCOMPARE(scene.check->completedSteps(), FullCheck::steps());
            }
    }

    void aHungToolCanBeLeft()
    {
        enum Leaving { cancelling, again, destroying };
        const FullMac healthy;
        for (const auto &[tool, steps] : {std::pair{u"/usr/bin/du"_qs, 0}, {u"/usr/local/bin/docker"_qs, 4}})
            for (const Leaving leaving : {cancelling, again, destroying}) {
                const FullMac mac;
                mac.addTool(tool, hanging);
                Scene scene(mac);
                scene.check->run();
                QVERIFY(waitUntil(
                    [&] { return hangingPid(mac) > 0 && scene.check->completedSteps().size() == steps; }));
                const int pid = hangingPid(mac);
                QVERIFY(!isGone(pid));
                if (leaving == destroying) {
                    scene.check.reset();
                    QVERIFY(isGone(pid) && !scene.state.isScanning());
                    QCoreApplication::processEvents(); // what the scans gave comes for nobody
                    continue;
                }
                if (leaving == cancelling) {
                    scene.check->cancel();
                    QVERIFY(!scene.state.isScanning() && scene.check->phase() == FullCheck::Phase::done);
                    QVERIFY(waitUntil([&] { return isGone(pid); }));
                    QVERIFY(scene.candidates().isEmpty() && !scene.state.lastScan());
                }
                const QString place = mac.folder() + u"/root"_qs + tool;
                QVERIFY(QFile::remove(place) && QFile::copy(healthy.folder() + u"/root"_qs + tool, place));
                QVERIFY(scene.run());
                QVERIFY(waitUntil([&] { return isGone(pid); }));
                QCOMPARE(scene.check->completedSteps(), FullCheck::steps());
                QCOMPARE(scene.candidates().size(), 5);
                QCOMPARE(scene.finished.size(), 1);
            }
    }

    void whatIsTickedIsRemoved()
    {
        const FullMac mac;
        Scene scene(mac);
        FullCheck &check = *scene.check;
        QVERIFY(scene.run());
        const QStringList ids = scene.candidates();
        QCOMPARE(check.removeLabel(), u"Remove Everything"_qs);
        check.setSelected(ids[1], false);
        check.setSelected(ids[3], false);
        QCOMPARE(check.removeLabel(), u"Remove 3 Items"_qs);
        const auto removed = check.selectedItems();
        check.forget({removed.at(0), removed.at(1)});
        QCOMPARE(scene.candidates(), QStringList({ids[1], ids[3], ids[4]}));
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

    void removalsAtOnceLoseNothing()
    {
        const FullMac mac;
        Scene scene(mac);
        FullCheck &check = *scene.check;
        QVERIFY(scene.run());
        const auto all = check.result().removalCandidates;
        QVERIFY(all.size() > 3);
        // The same copies, as another page found them.
        RemovableItem copies = all.at(1);
        QVERIFY(std::holds_alternative<DuplicateGroup>(copies.kind));
        copies.id += u" elsewhere"_qs;
        check.forget({all.at(0)});
        check.forget({copies});
        QCOMPARE(check.result().removalCandidates.size(), all.size() - 2);
        QCOMPARE(check.removedSince().size(), std::size_t{1});
        check.endRemoval({all.at(0)});
        check.endRemoval({copies});
        QVERIFY(check.result().removalCandidates == all);
        QVERIFY(check.removedSince().empty() && !check.isRemoving());

        // What goes while a check looks is not listed by it, unless it stays.
        check.forget({all.at(0)});
        scene.finished.clear();
        check.run();
        check.forget({all.at(1)});
        QVERIFY(waitUntil([&] { return !scene.finished.isEmpty(); }));
        QCOMPARE(check.result().removalCandidates.size(), all.size() - 2);
        check.endRemoval({});
        check.endRemoval({all.at(1)});
        QCOMPARE(check.result().removalCandidates.size(), all.size() - 1);
    }
};

QTEST_GUILESS_MAIN(FullCheckTest)
#include "FullCheckTest.moc"
