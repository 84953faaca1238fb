// Each tool in each kind of trouble: what does not need its answer goes on, and so does all once it is well
// again.
#include "app/ApplicationFlows.h"
#include "cleanup/FullMac.h"
#include "cleanup/Search.h"
#include "flows/ai/AskFlow.h"
#include "flows/cleanup/StorageScans.h"
#include "support/LoopbackServer.h"
#include "support/Table.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

const char *const tools[] = {"/bin/ps",
                             "/usr/bin/top",
                             "/usr/bin/nettop",
                             "/usr/sbin/sysctl",
                             "/bin/launchctl",
                             "/usr/bin/codesign",
                             "/usr/bin/osascript",
                             "/usr/bin/du",
                             "/usr/bin/find",
                             "/usr/bin/xcrun",
                             "/usr/local/bin/docker",
                             "/usr/bin/env",
                             "/usr/sbin/system_profiler"};

} // namespace

class FaultsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void allElseGoesOn_data()
    {
        QTest::addColumn<QByteArray>("trouble");
        QTest::newRow("not there") << QByteArray();
        QTest::newRow("hangs") << QByteArray("exec sleep 600");
        QTest::newRow("is killed") << QByteArray("kill -9 $$");
        QTest::newRow("noise") << QByteArray("head -c 100000 /dev/urandom; exit 3");
        QTest::newRow("100 MB") << QByteArray("exec head -c 100000000 /dev/zero");
        QTest::newRow("lines without end") << QByteArray("exec yes '1 1 1.0 1.0 1 a b c'");
        QTest::newRow("a child keeps the pipe") << QByteArray("sleep 600 & exit 0");
    }

    void allElseGoesOn()
    {
        const QFETCH(QByteArray, trouble);
        const LoopbackServer server(
            always(httpAnswer(200, modelReply(u"{\"explanation\": \"Fine.\", \"appToQuit\": \"\"}"_qs))));
        qputenv("SWABBY_AI_PROXY_URL", server.url().toEncoded());
        for (const char *tool : tools) {
            const FullMac mac;
            AppState state(mac.open(), Record::everything);
            ApplicationFlows flows(state);
            std::vector<RemovableItem> copies;
            for (const RemovableItem &item : findEverything(Search::on(state.machine(), {})))
                if (item.id.startsWith(u"dup:"_qs))
                    copies.push_back(item);
            QVERIFY(!copies.empty());
            const QString place = QString::fromLatin1(tool);
            mac.addTool(place, trouble.isEmpty() ? ":" : trouble);
            if (trouble.isEmpty())
                QVERIFY(QFile::remove(mac.folder() + u"/root"_qs + place));

            for (int count = 0; count < 3; ++count)
                state.refresh();
            flows.cleanup.remove(copies);
            AskFlow asking(state, flows.ai);
            asking.ask(u"How is it?"_qs);
            QVERIFY2(waitUntil([&] { return !asking.isAsking(); }), tool);
            QCOMPARE(asking.explanation(), u"Fine."_qs);
            QVERIFY2(waitUntil([&] { return state.lastCleanup().has_value(); }), tool);
            QVERIFY2(state.lastCleanup()->left.empty(), tool);

            mac.addTool(place, ":");
            mac.setProcesses({"10 1 95 1.0 1000 /usr/bin/mill"});
            // One that was begun before may be applied after the next.
            for (int tries = 0; tries < 5 && state.processes().isEmpty(); ++tries) {
                const int before = state.refreshesApplied();
                state.refresh();
                QVERIFY2(waitUntil([&] { return state.refreshesApplied() > before; }), tool);
            }
            QVERIFY2(!state.processes().isEmpty(), tool);
        }
    }
};

QTEST_GUILESS_MAIN(FaultsTest)
#include "FaultsTest.moc"
