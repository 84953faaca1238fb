#include "platform/LatestRun.h"
#include "platform/BackgroundWork.h"
#include "support/TemporaryMachine.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

std::function<void(const ScanProgress &)> into(QStringList &heard)
{
    return [&heard](const ScanProgress &progress) { heard.append(progress.what); };
}

} // namespace

class LatestRunTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aRunThatIsOverIsNotHeard_data()
    {
        using Leave = std::function<void(std::unique_ptr<LatestRun> &)>;
        QTest::addColumn<Leave>("leave");
        QTest::addColumn<QStringList>("expected");
        const QStringList all = {u"answer"_qs, u"late"_qs};
        QTest::newRow("waited for") << Leave([](auto &) {}) << all;
        QTest::newRow("stopped") << Leave([](auto &run) { run->end(); }) << QStringList();
        QTest::newRow("begun anew") << Leave([](auto &run) { run->begin(); }) << QStringList();
        QTest::newRow("its owner gone") << Leave([](auto &run) { run.reset(); }) << QStringList();
    }
    void aRunThatIsOverIsNotHeard()
    {
        QFETCH(std::function<void(std::unique_ptr<LatestRun> &)>, leave);
        QFETCH(QStringList, expected);
        QStringList heard;
        auto run = std::make_unique<LatestRun>();
        const ScanControl control = run->begin(into(heard));
        QPromise<QString> answer;
        answer.start();
        run->whenDone(answer.future(), [&](const QString &text) { heard.append(text); });
        control.report({.what = u"early"_qs});
        QCoreApplication::processEvents(); // it is on its way now
        leave(run);
        QCOMPARE(control.stop.stopRequested(), expected.isEmpty());
        control.report({.what = u"late"_qs});
        answer.addResult(u"answer"_qs);
        answer.finish();

        // What another run reports afterwards comes afterwards.
        QStringList later;
        LatestRun another;
        another.begin(into(later)).report({});
        QVERIFY(waitUntil([&] { return !later.isEmpty(); }));
        QCOMPARE(heard, expected);
    }

    void anAnswerMayEndItsRun()
    {
        auto run = std::make_unique<LatestRun>();
        BackgroundWork work(1);
        run->begin();
        run->whenDone(work.ask([] { return 1; }), [&](int) {
            run->begin();
            run->whenDone(work.ask([] { return 2; }), [&](int) { run.reset(); });
        });
        QVERIFY(waitUntil([&] { return run == nullptr; }));
    }

    void whatGoesOnSideBySideEndsTogether()
    {
        QList<int> heard;
        BackgroundWork work(1);
        auto run = std::make_unique<LatestRun>();
        const StopToken first = run->join();
        const StopToken second = run->join();
        for (const int number : {1, 2})
            run->whenDone(work.ask([number] { return number; }), [&](int answer) { heard.append(answer); });
        QVERIFY(waitUntil([&] { return heard == QList<int>({1, 2}); }));
        QVERIFY(!first.stopRequested() && !second.stopRequested());
        run.reset();
        QVERIFY(first.stopRequested() && second.stopRequested());
    }

    void theWorkOfARunThatIsOverEnds()
    {
        int progress = 0;
        BackgroundWork work(3);
        LatestRun run;
        for (int times = 0; times < 3; ++times) {
            const ScanControl control = run.begin([&](const ScanProgress &) { ++progress; });
            work.queue([control] {
                while (!control.stop.stopRequested())
                    control.report({});
            });
        }
        QVERIFY(run.isUnderWay());
        QVERIFY(waitUntil([&] { return progress > 1; })); // and here, while it still reports
    }
};

QTEST_GUILESS_MAIN(LatestRunTest)
#include "LatestRunTest.moc"
