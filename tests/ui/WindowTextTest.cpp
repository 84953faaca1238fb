#include "ui/presentation/PopoverText.h"
#include "ui/presentation/SettingsText.h"

#include <QtTest/QTest>

#include <cmath>
#include <limits>

using namespace swabby;

namespace {

SystemStats machineWith(double cpu, double usedDisk)
{
    SystemStats stats;
    stats.cpuUsagePercent = cpu;
    stats.memUsedBytes = 699;
    stats.memTotalBytes = 1'000;
    stats.diskTotalBytes = 1'000'000;
    stats.diskFreeBytes = std::llround(1'000'000 * (1 - usedDisk));
    return stats;
}

} // namespace

class WindowTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void chipsTurnAtLimitsOfTheirOwn_data()
    {
        QTest::addColumn<double>("cpu");
        QTest::addColumn<double>("usedDisk");
        QTest::addColumn<QString>("speed");
        QTest::addColumn<Tint>("speedTint");
        QTest::addColumn<Tint>("storageTint");
        QTest::newRow("calm") << 25.9 << 0.899 << u"25%"_qs << Tint::accent << Tint::accent;
        QTest::newRow("busy") << 26.0 << 0.9 << u"26%"_qs << Tint::orange << Tint::red;
        QTest::newRow("still busy") << 70.9 << 0.9 << u"70%"_qs << Tint::orange << Tint::red;
        QTest::newRow("too busy") << 71.0 << 1.0 << u"71%"_qs << Tint::red << Tint::red;
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0.5 << u"–%"_qs << Tint::red
                                   << Tint::accent;
    }
    void chipsTurnAtLimitsOfTheirOwn()
    {
        QFETCH(double, cpu);
        QFETCH(double, usedDisk);
        const QList<PopoverChip> chips = popoverChips(machineWith(cpu, usedDisk), true);
        QCOMPARE(chips.size(), 3);
        QTEST(chips.at(0).value, "speed");
        QTEST(chips.at(0).tint, "speedTint");
        QTEST(chips.at(2).tint, "storageTint");
        QCOMPARE(chips.at(1).value, u"69%"_qs);
        QCOMPARE(chips.at(1).section, u"speed"_qs);
    }

    void nothingIsMadeUpForAMachineWithoutFigures()
    {
        const QList<PopoverChip> chips = popoverChips({}, false);
        QCOMPARE(chips.at(0).value, u"…"_qs);
        QCOMPARE(chips.at(1).value, u"0%"_qs);
        QCOMPARE(chips.at(2).tint, Tint::red);
    }

    void theBatteryHasAChip()
    {
        SystemStats stats = machineWith(1, 0.1);
        stats.batteryPercent = 84;
        QCOMPARE(popoverChips(stats, true).at(3),
                 (PopoverChip{u"battery.75"_qs, u"Battery"_qs, u"84%"_qs, Tint::accent, u"battery"_qs}));
        stats.isCharging = true;
        QCOMPARE(popoverChips(stats, true).at(3),
                 (PopoverChip{u"battery.100.bolt"_qs, u"Battery"_qs, u"84%"_qs, Tint::green, u"battery"_qs}));
    }

    void timesAreShownInTheLocalesWay_data()
    {
        QTest::addColumn<QString>("updated");
        QTest::addColumn<QString>("snoozedUntil");
        QTest::newRow("en_US") << u"9:41:07 PM"_qs << u"9:41 PM"_qs;
        QTest::newRow("de_DE") << u"21:41:07"_qs << u"21:41"_qs;
        QTest::newRow("fi_FI") << u"21.41.07"_qs << u"21.41"_qs;
        QTest::newRow("fr_CA") << u"21 h 41 min 07 s"_qs << u"21 h 41"_qs;
        QTest::newRow("zh_TW") << u"\u4e0b\u53489:41:07"_qs << u"\u4e0b\u53489:41"_qs;
        QTest::newRow("C") << u"21:41:07"_qs << u"21:41:07"_qs;
    }
    void timesAreShownInTheLocalesWay()
    {
        QFETCH(QString, updated);
        QFETCH(QString, snoozedUntil);
        const QLocale locale(QString::fromLatin1(QTest::currentDataTag()));
        const QDateTime time(QDate(2026, 3, 4), QTime(21, 41, 7));
        // Some editions of the locales' data part the half of the day with a narrow blank.
        const auto shown = [](QString text) { return text.replace(QChar(0x202f), QLatin1Char(' ')); };
        QCOMPARE(shown(updatedText(time, locale)), u"Updated "_qs + updated);
        const double until = static_cast<double>(time.toSecsSinceEpoch());
        QCOMPARE(shown(snoozeSentence(until, until - 1, locale)),
                 u"Notifications are silent until "_qs + snoozedUntil + u'.');
        QVERIFY(!updatedText({}, locale).contains(u"Updated"_qs));
    }

    void thePanelStandsBesideItsItemOnTheScreen_data()
    {
        QTest::addColumn<QRect>("item");
        QTest::addColumn<QPoint>("place");
        QTest::newRow("below a bar above") << QRect(500, 0, 40, 24) << QPoint(379, 29);
        QTest::newRow("above a bar below") << QRect(500, 776, 40, 24) << QPoint(379, 370);
        QTest::newRow("right corner") << QRect(980, 0, 20, 24) << QPoint(720, 29);
        QTest::newRow("left corner") << QRect(0, 0, 20, 24) << QPoint(0, 29);
        QTest::newRow("outside") << QRect(5'000, -900, 20, 24) << QPoint(720, 24);
    }
    void thePanelStandsBesideItsItemOnTheScreen()
    {
        QFETCH(QRect, item);
        const QRect available(0, 24, 1'000, 752);
        const QPoint place = popoverPosition(item, {280, 400}, available);
        QTEST(place, "place");
        QVERIFY(available.contains(QRect(place, QSize(280, 400))));
        // A panel that is too large shows its head.
        QCOMPARE(popoverPosition(item, {2'000, 2'000}, available), available.topLeft());
    }

    void slidersStayOnTheirSteps_data()
    {
        QTest::addColumn<double>("wanted");
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("between steps") << 61.9 << 60.0 << u"60%"_qs;
        QTest::newRow("nearer the next") << 62.6 << 65.0 << u"65%"_qs;
        QTest::newRow("too little") << -20.0 << 10.0 << u"10%"_qs;
        QTest::newRow("too much") << 1e300 << 100.0 << u"100%"_qs;
        QTest::newRow("no number") << std::numeric_limits<double>::infinity() << 85.0 << u"85%"_qs;
    }
    void slidersStayOnTheirSteps()
    {
        QFETCH(double, wanted);
        const SliderSetting slider = {u"cpuRed"_qs, {}, {}, 10, 100, 5, 85, u"85%"_qs, Tint::red};
        QTEST(movedTo(slider, wanted).value, "value");
        QTEST(movedTo(slider, wanted).valueText, "text");
    }

    void onlyWholePathsAreKept_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<std::optional<QString>>("path");
        using Path = std::optional<QString>;
        QTest::newRow("whole") << u"/home/ann/Music"_qs << Path(u"/home/ann/Music"_qs);
        QTest::newRow("pasted") << u"  /home/ann/Music/ \n"_qs << Path(u"/home/ann/Music"_qs);
        QTest::newRow("home") << u"~"_qs << Path(u"/home/ann"_qs);
        QTest::newRow("in the home") << u"~/Music"_qs << Path(u"/home/ann/Music"_qs);
        QTest::newRow("another's home") << u"~bob/Music"_qs << Path();
        QTest::newRow("an address") << u"file:///home/ann/My%20Music"_qs << Path(u"/home/ann/My Music"_qs);
        QTest::newRow("a far address") << u"https://example.invalid/x"_qs << Path();
        QTest::newRow("relative") << u"Music"_qs << Path();
        QTest::newRow("blank") << u"   "_qs << Path();
        QTest::newRow("the whole disk") << u"/home/../"_qs << Path();
    }
    void onlyWholePathsAreKept()
    {
        QFETCH(QString, typed);
        QFETCH(std::optional<QString>, path);
        QCOMPARE(excludedPath(typed, u"/home/ann"_qs), path);
    }

    void aSnoozeIsToldWhileItLasts()
    {
        QVERIFY(snoozeSentence({}, 100, QLocale::c()).startsWith(u"Nothing is snoozed."_qs));
        QVERIFY(!isSnoozed(100, 100));
        QVERIFY(snoozeSentence(101, 100, QLocale::c()).startsWith(u"Notifications are silent until "_qs));
    }
};

QTEST_GUILESS_MAIN(WindowTextTest)
#include "WindowTextTest.moc"
