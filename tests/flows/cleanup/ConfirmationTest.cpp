#include "flows/cleanup/ConfirmationBuilder.h"
#include "support/TemporaryMachine.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace swabby;

namespace {

ProcessSample sample(double cpu, double mem, double energy = 0, const QString &path = u"/opt/mill"_qs)
{
    return {.pid = 50,
            .name = u"Mill"_qs,
            .path = path,
            .cpuPercent = cpu,
            .memPercent = mem,
            .energyImpact = energy};
}

} // namespace

class ConfirmationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatIsAdvised()
    {
        const QString system = u"/usr/sbin/milld"_qs;
        struct Row {
            ProcessSample process;
            int trust;
            ActionRecommendation advice;
        };
        using enum ActionRecommendation;
        for (const Row &row : {Row{sample(70, 0), 55, forceQuit}, Row{sample(69.9, 0), 55, quit},
                               Row{sample(0, 0, 45), 75, forceQuit}, Row{sample(0, 0, 44.9), 75, keep},
                               Row{sample(60, 51), 30, forceQuit}, Row{sample(60, 26), 45, quit},
                               Row{sample(25, 0, 0, system), 95, quit}, Row{sample(24.9, 24.9), 85, keep},
                               Row{sample(0, 25), 85, quit}, Row{sample(5, 5), 85, keep}}) {
            QCOMPARE(row.process.trustRatio(), row.trust);
            QCOMPARE(recommendation(row.process), row.advice);
        }
    }

    void questionsAboutPrograms()
    {
        const TemporaryMachine folder;
        AppState state(folder.open(), Record::nothing);
        QuitFlow flow(state);
        const ConfirmationInfo quit =
            ConfirmationBuilder::quit(sample(73.9, 12.99), Quitting::Force::no, flow);
        QCOMPARE(quit.title, u"Quit Mill?"_qs);
        QCOMPARE(quit.message,
                 u"Currently using 73% of your Mac's power and 12% memory. Quits cleanly just like "
                 "closing it normally."_qs);
        QCOMPARE(quit.confirmLabel, u"Quit"_qs);
        QCOMPARE(quit.trustRatio, std::optional(55));
        QCOMPARE(quit.recommendation, std::optional(ActionRecommendation::forceQuit));
        const ConfirmationInfo force = ConfirmationBuilder::quit(sample(0, 0), Quitting::Force::yes, flow);
        QCOMPARE(force.title, u"Force quit Mill?"_qs);
        QCOMPARE(force.message,
                 u"This shuts it down immediately without saving state. Use only if a normal quit "
                 "didn't work."_qs);
        QCOMPARE(force.confirmLabel, u"Force Quit"_qs);
        QVERIFY(quit.isDestructive && force.isDestructive);
        QVERIFY(folder.events(u"signal"_qs).isEmpty() && folder.events(u"terminate"_qs).isEmpty());
    }

    void questionsAboutThings()
    {
        const TemporaryMachine folder;
        AppState state(folder.open(), Record::nothing);
        CleanupFlow flow(state);
        const RemovableItem build = RemovableItem::of(DerivedData{1'200'000'000});
        const ConfirmationInfo one = ConfirmationBuilder::remove({build}, flow);
        QCOMPARE(one.title, u"Remove Xcode build cache?"_qs);
        QCOMPARE(one.message, u"Frees up 1.2 GB. Rebuilds automatically next time you build."_qs);
        QCOMPARE(one.confirmLabel, u"Remove"_qs);
        int begun = 0;
        bool wasRemoving = false;
        const ConfirmationInfo several =
            ConfirmationBuilder::remove({build, RemovableItem::of(DockerPrune{46'200'000})}, flow, [&] {
                ++begun;
                wasRemoving = state.isRemoving();
            });
        QCOMPARE(several.title, u"Remove 2 items?"_qs);
        QCOMPARE(several.message,
                 u"Frees up 1.25 GB. Anything removable goes to Trash, not deleted outright — caches "
                 "and build artifacts regenerate automatically."_qs);
        QCOMPARE(several.confirmLabel, u"Remove All"_qs);
        QVERIFY(several.isDestructive && !several.trustRatio && !several.recommendation);
        QCOMPARE(ConfirmationBuilder::remove({}, flow).title, u"Remove 0 items?"_qs);
        QCOMPARE(begun, 0);
        QVERIFY(!state.isRemoving());

        const QSignalSpy removed(&flow, &CleanupFlow::removed);
        several.onConfirm();
        QCOMPARE(begun, 1);
        QVERIFY(wasRemoving);
        QVERIFY(waitUntil([&] { return !removed.isEmpty(); }));
    }

    void programsByName()
    {
        const TemporaryMachine folder;
        folder.setProcesses({"10 1 50 1 9 /Applications/Google Chrome.app/Contents/MacOS/Google Chrome",
                             "11 1 40 1 9 /opt/Mill", "12 1 30 1 9 /opt/mill helper",
                             "13 1 0 0 9 /opt/ÄSOP"});
        folder.addTool(u"/usr/bin/top"_qs,
                       "printf 'PID COMMAND POWER\\n14 a 1\\nPID COMMAND POWER\\n13 x 9\\n12 x 8\\n'");
        AppState state(folder.open(), Record::nothing);
        state.refresh();
        QVERIFY(waitUntil([&] { return state.refreshesApplied() == 1; }));
        const auto found = [&](const char *name) {
            const auto process = ConfirmationBuilder::findProcess(QString::fromUtf8(name), state);
            return process ? process->pid : 0;
        };
        QVERIFY(!state.batteryDrainers().isEmpty());
        for (const auto &[name, pid] : {std::pair{"Chrome", 10},
                                        {"chrome", 10},
                                        {"the Google Chrome browser", 10},
                                        {"MILL", 11},
                                        {"mill helper", 12},
                                        {"helper", 12},
                                        {"äsop", 13},
                                        {"", 0},
                                        {" \t", 0},
                                        {"loom", 0}})
            QCOMPARE(found(name), pid);
    }

    void batteryDrainersComeSecond()
    {
        const TemporaryMachine folder;
        QList<QByteArray> rows;
        for (int pid = 100; pid < 200; ++pid)
            rows.append(QByteArray::number(pid) + " 1 9 9 9 /opt/loom");
        rows.append("300 1 0 0 9 /opt/Mill");
        folder.setProcesses(rows);
        folder.addTool(u"/usr/bin/top"_qs,
                       "printf 'PID COMMAND POWER\\n1 a 1\\nPID COMMAND POWER\\n300 x 9\\n'");
        AppState state(folder.open(), Record::nothing);
        state.refresh();
        QVERIFY(waitUntil([&] { return state.refreshesApplied() == 1; }));
        const auto isListed = [](const QList<ProcessSample> &list) {
            return std::any_of(list.begin(), list.end(),
                               [](const auto &process) { return process.pid == 300; });
        };
        QVERIFY(!isListed(state.processes()) && isListed(state.batteryDrainers()));
        QCOMPARE(ConfirmationBuilder::findProcess(u"mill"_qs, state)->pid, 300);
    }
};

QTEST_GUILESS_MAIN(ConfirmationTest)
#include "ConfirmationTest.moc"
