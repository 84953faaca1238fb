#include "ui/presentation/CleanupText.h"
#include "ui/presentation/CheckText.h"
#include "ui/presentation/DeveloperText.h"

#include <QtTest/QTest>

using namespace swabby;

namespace {

RemovableItem cache(const char *path, std::int64_t bytes)
{
    return RemovableItem::of(CacheEntry{.path = path, .description = u"Cache"_qs, .sizeBytes = bytes});
}

} // namespace

class CleanupTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aRowSaysWhatIsBehindIt()
    {
        const DuplicateGroup group = {{"/home/a/Downloads/x.zip", "/home/a/Desktop/x.zip"}, 5'000, {}};
        const auto copies = removableRowText(RemovableItem::of(group), true, u"/home/a"_qs);
        QVERIFY(copies.isSelected);
        QCOMPARE(copies.size, u"5 KB"_qs);
        QCOMPARE(copies.details.size(), 2);
        QCOMPARE(copies.details.first().fate, u"stays"_qs);
        QCOMPARE(copies.details.last().place, u"~/Desktop"_qs);

        const auto docker = removableRowText(RemovableItem::of(DockerPrune{1}), false, u"/home/a"_qs);
        QVERIFY(docker.details.isEmpty()); // it lies nowhere that could be shown
        const auto hostile = removableRowText(
            RemovableItem::of(SimulatorRuntimeInfo{u"i"_qs, u"a\nb\u202e"_qs, 1, {}}), false, {});
        QCOMPARE(hostile.title, u"a b "_qs);
    }

    void theVerdictIsABadgeAndAReason()
    {
        RemovableRowText row;
        addVerdict(row, {{}, true, u"An ordinary\ncache."_qs});
        QCOMPARE(row.badgeSymbol, u"checkmark.seal"_qs);
        QVERIFY(!row.badgeWarns);
        QCOMPARE(row.subtitle, u"Suggested · An ordinary cache."_qs);
        addVerdict(row, {{}, false, u"Odd."_qs});
        QCOMPARE(row.badgeSymbol, u"questionmark.circle"_qs);
        QVERIFY(row.badgeWarns);
    }

    void theButtonFollowsTheSearch()
    {
        const QString first = u"Scan for duplicates"_qs;
        QCOMPARE(scanText(false, false, {}, first).action, first);
        QCOMPARE(scanText(false, true, {}, first).action, u"Scan again"_qs);
        const ScanText running = scanText(true, false, {u"x.zip"_qs, 1, 4}, first);
        QCOMPARE(running.progress, u"Looking at x.zip"_qs);
        QCOMPARE(running.fraction, 0.25);
        QCOMPARE(scanText(true, false, {{}, 9, 4}, first).fraction, 1.0);
        QCOMPARE(scanText(true, false, {{}, 9, 0}, first).fraction, 0.0);
    }

    void theQueueIsCounted()
    {
        QCOMPARE(queueText({}), u"Cleanup Queue · empty"_qs);
        QCOMPARE(queueText({cache("/c/a", 1'000'000)}), u"Cleanup Queue · 1 item · 1 MB"_qs);
        QCOMPARE(queueText({cache("/c/a", 1'000'000), cache("/c/b", 2'000'000)}),
                 u"Cleanup Queue · 2 items · 3 MB"_qs);
        QCOMPARE(putBackText(1, 0), u"1 item is back in place."_qs);
        QCOMPARE(putBackText(2, 1), u"1 item could not be put back and stayed in the Trash."_qs);
    }

    void aCacheWithinAnotherCountsOnce()
    {
        QCOMPARE(clearableBytes({cache("/c/Google/Chrome", 30), cache("/c/Google", 40)}), 40);
        QCOMPARE(clearableBytes({cache("/c/Goo", 30), cache("/c/Google", 40)}), 70);
        QCOMPARE(clearableBytes({cache("/c/a", 30), cache("/c/a", 30)}), 60);
        QCOMPARE(clearableText(0), QString());
        QCOMPARE(clearableText(14'200'000'000), u"14.2 GB of what is used can be cleared"_qs);
    }

    void runtimesAreOldAfterTwoWeeks()
    {
        const auto old = oldRuntimes({{u"a"_qs, u"iOS 1"_qs, 1, 13},
                                      {u"b"_qs, u"iOS 2"_qs, 1, 14},
                                      {u"c"_qs, u"iOS 3"_qs, 1, std::nullopt}});
        QCOMPARE(old.size(), std::size_t(1));
        QCOMPARE(old.front().title, u"iOS 2"_qs);
    }

    void dockerInParts()
    {
        const std::vector<DockerRow> rows = {{u"Images"_qs, u"3GB (45%)"_qs}, {u"Volumes"_qs, u"1GB"_qs}};
        QCOMPARE(dockerRowTexts(rows),
                 (QList<DockerRowText>{{u"Images"_qs, u"3 GB"_qs, 0.75}, {u"Volumes"_qs, u"1 GB"_qs, 0.25}}));
        QCOMPARE(dockerRowTexts({{u"Images"_qs, u"0B"_qs}}).first().fraction, 0.0);
        StorageScans::Findings clutter;
        QVERIFY(clutter.isEmpty());
        QCOMPARE(clutterText(clutter.items), QString());
        clutter.docker.state = DeveloperCleanup::DockerState::notRunning;
        QVERIFY(!clutter.isEmpty()); // it has its own message
        QCOMPARE(
            clutterText({RemovableItem::of(DerivedData{500}), RemovableItem::of(DockerPrune{4'000'000'000})}),
            u"4 GB can be cleared"_qs);
    }

    void onlyWhatWasSentIsConfessed()
    {
        SwabbyCheckResult result;
        QCOMPARE(sentText(result), QString());
        result.wasSent = true;
        QVERIFY(sentText(result).startsWith(u"Sent to Claude"_qs));
        ProcessSample busy;
        busy.cpuPercent = 73.9;
        QCOMPARE(watchedText(busy).detail, u"73% busy"_qs);
    }
};

QTEST_APPLESS_MAIN(CleanupTextTest)
#include "CleanupTextTest.moc"
