#include "health/LeakDetection.h"
#include "support/Table.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

constexpr double start = 1'790'000'000;
constexpr double mebibyte = 1'048'576;

ProcessSample mill(double mebibytes, std::int32_t pid = 7)
{
    return {pid, u"Mill"_qs, u"/mill"_qs, 0, 0, static_cast<std::uint64_t>(mebibytes * mebibyte)};
}

} // namespace

class LeakDetectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLastReadingDecides()
    {
        // Second and mebibytes of each reading, 0 for one that does not list it; growth and minutes of a
        // suspect.
        compareTable(fixture(u"health/the_last_reading_decides.txt"_qs), [](const Cells &row) {
            LeakTracker tracker;
            QString suspects;
            for (const QString &reading : row.text(1).split(u',')) {
                const QStringList words = reading.simplified().split(u' ');
                const double mebibytes = words[1].toDouble();
                const auto samples = mebibytes == 0 ? QList<ProcessSample>() : QList{mill(mebibytes)};
                suspects.clear();
                for (const LeakSuspect &suspect : tracker.update(samples, start + words[0].toDouble()))
                    suspects += u"%1 %2"_qs.arg(suspect.growthMB, 0, 'g', 4).arg(suspect.minutesTracked);
            }
            return suspects;
        });
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
