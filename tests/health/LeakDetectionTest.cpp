#include "health/LeakDetection.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

constexpr double start = 1'790'000'000;
constexpr double mebibyte = 1'048'576;

struct Reading {
    double second;
    double mebibytes;
};

ProcessSample mill(double mebibytes, std::int32_t pid = 7)
{
    return {pid, u"Mill"_qs, u"/mill"_qs, 0, 0, static_cast<std::uint64_t>(mebibytes * mebibyte)};
}

} // namespace

class LeakDetectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLastReadingDecides_data()
    {
        QTest::addColumn<QList<Reading>>("readings");
        QTest::addColumn<double>("growth"); // 0: no suspect
        QTest::addColumn<int>("minutes");
        const auto row = [](const char *name, const QList<Reading> &readings, double growth = 0,
                            int minutes = 0) { QTest::newRow(name) << readings << growth << minutes; };
        row("exactly a quarter of an hour and 50", {{0, 100}, {900, 150}}, 50, 15);
        row("a moment short", {{0, 100}, {899.9, 900}});
        row("growth of 49.9", {{0, 100}, {900, 149.9}});
        row("minutes are whole ones", {{0, 100}, {1'019, 200}}, 100, 16);
        row("one drop of 6 percent", {{0, 100}, {300, 94}, {900, 900}});
        row("one drop of 4 percent", {{0, 100}, {300, 96}, {900, 296}}, 196, 15);
        row("a drop of exactly 5 percent", {{0, 100}, {300, 95}, {900, 200}}, 100, 15);
        row("many small drops that add up", {{0, 100}, {60, 96}, {120, 92.5}, {180, 89}, {900, 160}}, 60, 15);
        row("a drop at the very end", {{0, 100}, {600, 900}, {900, 800}});
        row("level all the time", {{0, 900}, {900, 900}});
        row("shrunk", {{0, 900}, {450, 880}, {900, 860}});
        row("a drop that aged out", {{0, 900}, {60, 100}, {1'860, 160}}, 60, 30);
        row("a drop at the edge of the window", {{60, 900}, {120, 100}, {1'860, 160}});
        row("growth that aged out", {{0, 100}, {60, 200}, {1'861, 220}});
        row("away for a while", {{0, 100}, {600, 0}, {1'200, 160}}, 60, 20);
        row("away for too long", {{0, 100}, {600, 0}, {1'801, 400}});
        row("from nothing", {{0, 0.0001}, {900, 60}}, 60, 15);
    }

    void theLastReadingDecides()
    {
        QFETCH(QList<Reading>, readings);
        QFETCH(double, growth);
        QFETCH(int, minutes);
        LeakTracker tracker;
        QList<LeakSuspect> suspects;
        for (const Reading &reading : readings)
            suspects = tracker.update(reading.mebibytes == 0 ? QList<ProcessSample>()
                                                             : QList{mill(reading.mebibytes)},
                                      start + reading.second);
        QCOMPARE(suspects.size(), growth > 0 ? 1 : 0);
        if (growth > 0) {
            QVERIFY(qAbs(suspects.first().growthMB - growth) < 0.001);
            QCOMPARE(suspects.first().minutesTracked, minutes);
        }
    }

    void suspectsAreThoseOfTheList()
    {
        LeakTracker tracker;
        tracker.update({mill(100, 1), mill(100, 2), mill(100, 3)}, start);
        const auto suspects = tracker.update({mill(200, 3), mill(300, 1), mill(900, 4)}, start + 900);
        QCOMPARE(suspects, (QList<LeakSuspect>{{3, u"Mill"_qs, 100, 15}, {1, u"Mill"_qs, 200, 15}}));
        QVERIFY(tracker.update({}, start + 960).isEmpty());
    }

    void anotherProgramUnderTheSameNumber()
    {
        LeakTracker tracker;
        tracker.update({mill(100)}, start);
        ProcessSample loom = mill(900);
        loom.name = u"Loom"_qs;
        QVERIFY(tracker.update({loom}, start + 900).isEmpty());
        loom.rssBytes *= 2;
        QCOMPARE(tracker.update({loom}, start + 1'800), (QList<LeakSuspect>{{7, u"Loom"_qs, 900, 15}}));
    }

    void sentences()
    {
        const LeakSuspect suspect = {
            .pid = 7, .name = u"Mill <b>"_qs, .growthMB = 312.9, .minutesTracked = 21};
        QCOMPARE(leakHeadline(suspect), u"Possible memory leak: Mill <b>"_qs);
        QCOMPARE(leakDetail(suspect), u"Memory climbed steadily for 21m (+312 MB) without leveling off."_qs);
    }
};

QTEST_GUILESS_MAIN(LeakDetectionTest)
#include "LeakDetectionTest.moc"
