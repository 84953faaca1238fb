#include "flows/cleanup/ConfirmationBuilder.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace swabby;

namespace {

ProcessSample sample(double cpu, double mem)
{
    return {.pid = 50, .name = u"Mill"_qs, .path = u"/opt/mill"_qs, .cpuPercent = cpu, .memPercent = mem};
}

} // namespace

class ConfirmationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void questions()
    {
        const TemporaryMachine folder;
        AppState state(folder.open(), Record::nothing);
        QuitFlow quitting(state);
        const auto asked = [&](const ProcessSample &process, Quitting::Force force) {
            return ConfirmationBuilder::quit(process, quitting.plan(process, force).result(), quitting);
        };
        const ConfirmationInfo quit = asked(sample(73.9, 12.99), Quitting::Force::no);
        QCOMPARE(quit.title + quit.confirmLabel, u"Quit Mill?Quit"_qs);
        QVERIFY(quit.message.startsWith(u"Currently using 73% of your Mac's power and 12% memory."_qs));
        QCOMPARE(quit.trustRatio, std::optional(55));
        QCOMPARE(quit.recommendation, std::optional(ActionRecommendation::forceQuit));
        const ConfirmationInfo force = asked(sample(0, 0), Quitting::Force::yes);
        QCOMPARE(force.title + force.confirmLabel, u"Force quit Mill?Force Quit"_qs);
        QVERIFY(force.message.contains(u"without saving"_qs));
        ProcessSample shell = sample(73.9, 12.99);
        shell.holdsSession = true;
        for (const auto how : {Quitting::Force::no, Quitting::Force::yes})
            QVERIFY(
                asked(shell, how)
                    .message.contains(u"ends the session: everything that is open closes, and unsaved"_qs));
        QVERIFY(folder.events(u"signal"_qs).isEmpty() && folder.events(u"terminate"_qs).isEmpty());

        CleanupFlow cleanup(state);
        const RemovableItem build = RemovableItem::of(DerivedData{1'200'000'000});
        const ConfirmationInfo one = ConfirmationBuilder::remove({build}, cleanup);
        QCOMPARE(one.title + one.confirmLabel, u"Remove Xcode build cache?Remove"_qs);
        QVERIFY(one.message.startsWith(u"Frees up 1.2 GB. "_qs + build.subtitle));
        int begun = 0;
        bool wasRemoving = false;
        const ConfirmationInfo several =
            ConfirmationBuilder::remove({build, RemovableItem::of(DockerPrune{46'200'000})}, cleanup, [&] {
                ++begun;
                wasRemoving = state.isRemoving();
            });
        QCOMPARE(several.title + several.confirmLabel, u"Remove 2 items?Remove All"_qs);
        QVERIFY(several.message.startsWith(u"Frees up 1.25 GB. "_qs));
        QVERIFY(!several.trustRatio && !several.recommendation);
        for (const ConfirmationInfo &info : {quit, force, one, several})
            QVERIFY(info.isDestructive);
        QVERIFY(begun == 0 && !state.isRemoving());
        CacheEntry trash;
        trash.trash = std::make_shared<TrashListing>(TrashListing{.items = {{"a", {}}, {"b", {}}}});
        QVERIFY(ConfirmationBuilder::remove({build, RemovableItem::of(trash)}, cleanup)
                    .warning.startsWith(u"Gone for good: 2 things in the Trash."_qs));
        QCOMPARE(several.warning, QString());

        const QSignalSpy removed(&cleanup, &CleanupFlow::removed);
        several.onConfirm();
        QVERIFY(begun == 1 && wasRemoving);
        QVERIFY(waitUntil([&] { return !removed.isEmpty(); }));
    }

    void programsByName()
    {
        const TemporaryMachine folder;
        QList<QByteArray> rows = {"10 1 50 1 9 /Applications/Google Chrome.app/Contents/MacOS/Google Chrome",
                                  "11 1 40 1 9 /opt/Mill", "12 1 30 1 9 /opt/mill helper"};
        for (int pid = 100; pid < 200; ++pid)
            rows.append(QByteArray::number(pid) + " 1 9 9 9 /opt/loom");
        rows.append("13 1 0 0 9 /opt/ÄSOP"); // too idle for the list
        folder.setProcesses(rows);
        folder.addTool(u"/usr/bin/top"_qs,
                       "printf 'PID COMMAND POWER\\n14 a 1\\nPID COMMAND POWER\\n13 x 9\\n12 x 8\\n'");
        AppState state(folder.open(), Record::nothing);
        state.refresh();
        QVERIFY(waitUntil([&] { return state.refreshesApplied() == 1; }));
        for (const ProcessSample &listed : state.processes())
            QVERIFY(listed.pid != 13);
        // The one of 13 is among those that drain the battery.
        compareTable(fixture(u"flows/programs_by_name.txt"_qs), [&](const Cells &row) {
            const auto process = ConfirmationBuilder::findProcess(row.text(0), state);
            return QString::number(process ? process->pid : 0);
        });
    }
};

QTEST_GUILESS_MAIN(ConfirmationTest)
#include "ConfirmationTest.moc"
