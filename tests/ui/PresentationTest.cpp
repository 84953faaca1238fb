#include "ui/presentation/BatteryText.h"
#include "ui/presentation/CheckText.h"
#include "ui/presentation/CleanupText.h"
#include "ui/presentation/DeveloperText.h"
#include "ui/presentation/Gauges.h"
#include "ui/presentation/HealthText.h"
#include "ui/presentation/NetworkText.h"
#include "ui/presentation/PlainWords.h"
#include "ui/presentation/PopoverText.h"
#include "ui/presentation/ProcessText.h"
#include "ui/presentation/Sections.h"
#include "ui/presentation/SettingsText.h"
#include "ui/presentation/SpeedHistory.h"
#include "ui/presentation/StartupText.h"

#include <QtTest/QTest>

#include <cmath>
#include <limits>

using namespace swabby;

namespace {

ProcessSample process(const QString &name, double cpu = 0, double energy = 0, std::int64_t network = 0)
{
    return {7, name, u"/bin/x"_qs, cpu, 1, 1'500'000'000, false, energy, network};
}

RemovableItem cache(const char *path, std::int64_t bytes)
{
    return RemovableItem::of(CacheEntry{.path = path, .description = u"Cache"_qs, .sizeBytes = bytes});
}

SystemStats machineWith(double cpu, double memory, double usedDisk)
{
    SystemStats stats;
    stats.cpuUsagePercent = cpu;
    stats.memTotalBytes = stats.diskTotalBytes = 1'000'000;
    stats.memUsedBytes = static_cast<std::uint64_t>(std::llround(memory * 1'000'000));
    stats.diskFreeBytes = std::llround((1 - usedDisk) * 1'000'000);
    return stats;
}

} // namespace

class PresentationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void gaugesAndChipsTurnAtLimitsOfTheirOwn()
    {
        struct Row {
            double cpu, memory, usedDisk;
            QString gauges, chips; // each a letter of its tint
            QString speed;
        };
        const double none = std::numeric_limits<double>::quiet_NaN();
        for (const Row &row : {Row{25.9, 0.6999, 0.8999, u"aaa"_qs, u"aaa"_qs, u"25%"_qs},
                               Row{26, 0.6999, 0.8999, u"aaa"_qs, u"oaa"_qs, u"26%"_qs},
                               Row{29.9, 0.6999, 0.9, u"aar"_qs, u"oar"_qs, u"29%"_qs},
                               Row{30, 0.7, 0.5, u"ooa"_qs, u"oaa"_qs, u"30%"_qs},
                               Row{69.9, 0.8499, 0.5, u"ooa"_qs, u"oaa"_qs, u"69%"_qs},
                               Row{70, 0.85, 0.5, u"rra"_qs, u"oaa"_qs, u"70%"_qs},
                               Row{70.9, 3, 1, u"rrr"_qs, u"oar"_qs, u"70%"_qs},
                               Row{71, 3, 1, u"rrr"_qs, u"rar"_qs, u"71%"_qs},
                               Row{240, 3, 1, u"rrr"_qs, u"rar"_qs, u"240%"_qs},
                               Row{none, 0, 0.5, u"aaa"_qs, u"raa"_qs, u"–%"_qs}}) {
            const SystemStats stats = machineWith(row.cpu, row.memory, row.usedDisk);
            const auto letters = [](const auto &shown) {
                QString tints;
                for (const auto &one : shown)
                    tints += one.tint == Tint::red ? u'r' : one.tint == Tint::orange ? u'o' : u'a';
                return tints;
            };
            const QList<Gauge> gauges = overviewGauges(stats, true);
            const QList<PopoverChip> chips = popoverChips(stats, true);
            QCOMPARE(letters(gauges), row.gauges); // and none for a battery that is not there
            QCOMPARE(letters(chips), row.chips);
            QCOMPARE(chips.first().value, row.speed);
            for (const Gauge &gauge : gauges)
                QVERIFY(gauge.fraction >= 0 && gauge.fraction <= 1);
        }
        QCOMPARE(popoverChips(machineWith(1, 0.6999, 0), true).at(1).value, u"69%"_qs);
    }

    void figuresSpeakPlainly()
    {
        SystemStats stats = machineWith(46.9, 0, 0);
        stats.memUsedBytes = 12'025'908'429;
        stats.memTotalBytes = 17'179'869'184;
        stats.diskFreeBytes = 112'400'000'000;
        stats.batteryPercent = 84;
        stats.timeRemainingMinutes = 135;
        const auto words = [&](int place) {
            const Gauge gauge = overviewGauges(stats, true).at(place);
            return gauge.value + u' ' + gauge.rest;
        };
        QCOMPARE(words(0), u"46% busy "_qs);
        QCOMPARE(words(1), u"11.2 GB / 16 GB"_qs);
        QCOMPARE(words(2), u"112.4 GB free"_qs);
        QCOMPARE(words(3), u"84% · 2h 15m"_qs);
        QCOMPARE(popoverChips(stats, true).at(3).tint, Tint::accent);
        QCOMPARE(batterySummary(stats).headline, u"On battery · 2h 15m left"_qs);
        stats.isCharging = true;
        QCOMPARE(popoverChips(stats, true).at(3).tint, Tint::green);
        QCOMPARE(overviewGauges(stats, true).at(3).title, u"Battery (charging)"_qs);
        QCOMPARE(batterySummary(stats).headline, u"Charging · 2h 15m until full"_qs);
        // Nothing is made up about what is not known.
        stats.timeRemainingMinutes.reset();
        QCOMPARE(words(3), u"84% "_qs);
        QCOMPARE(batterySummary(stats).headline, u"Charging"_qs);
        QCOMPARE(batterySummary(stats).facts.size(), 1);
        QVERIFY(!batterySummary({}).isPresent);
        const Gauge unknown = overviewGauges(stats, false).first();
        QVERIFY(unknown.value.isEmpty() && !unknown.rest.contains(u'0'));
        QCOMPARE(popoverChips({}, false).first().value, u"…"_qs);
        QCOMPARE(usedStorageFraction({}), 1.0);
    }

    void processRowsFollowTheirMode()
    {
        struct Row {
            ProcessRowMode mode;
            double figure;
            QString value;
            bool isEmphasized = false;
        };
        using enum ProcessRowMode;
        for (const Row &row :
             {Row{activity, 50, u"50%"_qs}, Row{activity, 50.1, u"50%"_qs, true},
              Row{activity, 36.6, u"37%"_qs}, Row{battery, 9.99, u"Low"_qs}, Row{battery, 10, u"Moderate"_qs},
              Row{battery, 39.9, u"Moderate"_qs}, Row{battery, 40, u"High"_qs, true},
              Row{network, 999'999, u"1 MB/s"_qs}, Row{network, 1'000'000, u"1 MB/s"_qs, true}}) {
            const auto bytes = static_cast<std::int64_t>(row.figure);
            const ProcessRowText text =
                processRowText(process(u"Mill"_qs, row.figure, row.figure, bytes), row.mode, true);
            QCOMPARE(text.value, row.value);
            QCOMPARE(text.isEmphasized, row.isEmphasized);
            QCOMPARE(text.detail, row.mode == network ? text.value : u"1.5 GB"_qs);
            QCOMPARE(text.trustSymbol, text.trust > 49 ? u"star.fill"_qs : u"star"_qs);
        }
    }

    void searchKeepsItsBlanks()
    {
        const QList<ProcessSample> all = {process(u"Mill"_qs), process(u"Wind Mill"_qs), process(u"cat"_qs)};
        for (const auto &[text, found] : {std::pair{"", 3}, {"   ", 3}, {"MILL", 2}, {" m", 1}, {"zebra", 0}})
            QCOMPARE(filteredProcesses(all, QString::fromLatin1(text)).size(), found);
    }

    void namesAreMadeHarmless()
    {
        struct Row {
            QString name, line, letter;
        };
        for (const Row &row :
             {Row{u"mds_stores"_qs, u"mds_stores"_qs, u"M"_qs}, Row{u"a\nb\u2028c"_qs, u"a b c"_qs, u"A"_qs},
              Row{u"x\u202Egpj.exe"_qs, u"x gpj.exe"_qs, u"X"_qs},
              Row{u"<img src='x'>"_qs, u"<img src='x'>"_qs, u"I"_qs}, Row{u"---"_qs, u"---"_qs, u"?"_qs},
              Row{u"\U0001D538bc"_qs, u"\U0001D538bc"_qs, u"\U0001D538"_qs}}) {
            QCOMPARE(oneLine(row.name), row.line);
            QCOMPARE(tileLetter(row.name), row.letter);
        }
    }

    void issuesOfferWhatTheirActionSays()
    {
        const ProcessSample safari = process(u"Safari\n"_qs);
        const HealthIssue speed = {
            HealthLevel::red, MainSection::speed, {}, {}, {}, OpenSection{MainSection::speed}};
        const HealthIssue storage = {HealthLevel::yellow, MainSection::storage, {}, {}, {},
                                     KillProcess{safari}};
        const IssueCard card = issueCards({storage, speed}).first();
        QCOMPARE(card.actionLabel, u"Quit Safari "_qs);
        QVERIFY(card.isDestructive);
        const QList<IssueCard> ofSpeed = issueCards({storage, speed}, MainSection::speed);
        QCOMPARE(ofSpeed.size(), 1);
        QCOMPARE(ofSpeed.first().index, 1); // its place among all, which the button names
    }

    void pausesBreakTheLine()
    {
        constexpr double now = 1'000'000;
        const History history = {{now - 90'000, 90, 0}, {now - 600, 50, 0}, {now - 540, 150, 0},
                                 {now - 300, 20, 0},    {now - 120, 10, 0}, {now - 60, std::nan(""), 0},
                                 {now - 30, 0, 0},      {now, 30, 0}};
        const QList<SpeedStretch> stretches = speedStretches(history, now);
        QCOMPARE(stretches.size(), 2);
        QCOMPARE(stretches.first().size(), 2);
        QCOMPARE(stretches.first().last().y(), 1.0); // never out of the picture
        QCOMPARE(stretches.last().size(), 3);
        QCOMPARE(stretches.last().last(), QPointF(1, 0.3));
        QCOMPARE(averageSpeedText({{0, 20, 0}, {0, 29.9, 0}}), u"Avg 24%"_qs);
    }

    void networkBrowsersAndStartup()
    {
        const QList<ProcessSample> users = {process(u"a"_qs, 0, 0, 4'200'000), process(u"b"_qs, 0, 0, 0)};
        QCOMPARE(totalNetworkRate(users), u"4.2 MB/s"_qs);
        QCOMPARE(networkSentence(users), u"moving right now, 1 program"_qs);
        QCOMPARE(browserRowTexts({{u"Fox"_qs, 3, 1'880'000'000, 36.6}}).first(),
                 (BrowserRowText{u"Fox"_qs, u"3 tabs & helpers"_qs, u"1.88 GB"_qs, u"37% busy"_qs}));

        const LoginItem orphan = {u"old"_qs, {},   u"/gone"_qs, LoginItemScope::userAgent, true, true,
                                  true,      true, 12};
        const LoginItem vouchedFor = {u"music"_qs, {},    {}, LoginItemScope::classicLoginItem, true, false,
                                      true,        false, {}};
        const auto review = startupRowTexts({vouchedFor, orphan}, true);
        QCOMPARE(review.size(), 1);
        QCOMPARE(review.first().badge, u"Left behind"_qs);
        const StartupRowText rest = startupRowTexts({vouchedFor, orphan}, false).first();
        QCOMPARE(rest.badge + rest.detail, u"Opens when you log in"_qs);
        QList<QString> shortcuts;
        for (const SectionRow &row : sectionRows())
            shortcuts.append(row.shortcut);
        QCOMPARE(shortcuts.at(2), u"Ctrl+3"_qs);
        QCOMPARE(shortcuts.removeDuplicates(), 0);
    }

    void removableRows()
    {
        const DuplicateGroup group = {{"/home/a/Downloads/x.zip", "/home/a/Desktop/x.zip"}, 5'000, {}};
        const auto copies = removableRowText(RemovableItem::of(group), true, u"/home/a"_qs);
        QVERIFY(copies.isSelected);
        QCOMPARE(copies.size, u"5 KB"_qs);
        QCOMPARE(copies.details.size(), 2);
        QCOMPARE(copies.details.first().fate, u"stays"_qs);
        QCOMPARE(copies.details.last().place, u"~/Desktop"_qs);
        // What lies nowhere has nothing to show.
        QVERIFY(removableRowText(RemovableItem::of(DockerPrune{1}), false, {}).details.isEmpty());
        RemovableRowText hostile = removableRowText(
            RemovableItem::of(SimulatorRuntimeInfo{u"i"_qs, u"a\nb\u202e"_qs, 1, {}}), false, {});
        QCOMPARE(hostile.title, u"a b "_qs);
        addVerdict(hostile, {{}, true, u"An ordinary\ncache."_qs});
        QVERIFY(!hostile.badgeWarns);
        QCOMPARE(hostile.subtitle, u"Suggested · An ordinary cache."_qs);
        addVerdict(hostile, {{}, false, u"Odd."_qs});
        QVERIFY(hostile.badgeWarns);
    }

    void searchesAndWhatTheyFoundInWords()
    {
        const QString first = u"Scan for duplicates"_qs;
        QCOMPARE(scanText(false, false, {}, first).action, first);
        QCOMPARE(scanText(false, true, {}, first).action, u"Scan again"_qs);
        const ScanText running = scanText(true, false, {u"x.zip"_qs, 1, 4}, first);
        QCOMPARE(running.progress, u"Looking at x.zip"_qs);
        QCOMPARE(running.fraction, 0.25);
        QCOMPARE(scanText(true, false, {{}, 9, 4}, first).fraction, 1.0);
        QCOMPARE(scanText(true, false, {{}, 9, 0}, first).fraction, 0.0);
        QCOMPARE(queueText({}), u"Cleanup Queue · empty"_qs);
        QCOMPARE(queueText({cache("/c/a", 1'000'000)}), u"Cleanup Queue · 1 item · 1 MB"_qs);
        QCOMPARE(queueText({cache("/c/a", 1'000'000), cache("/c/b", 2'000'000)}),
                 u"Cleanup Queue · 2 items · 3 MB"_qs);
        QCOMPARE(putBackText(1, 0), u"1 item is back in place."_qs);
        QCOMPARE(putBackText(2, 0), u"2 items are back in place."_qs);
        QCOMPARE(putBackText(2, 1), u"1 item could not be put back and stayed in the Trash."_qs);
        QCOMPARE(watchedText(process({}, 73.9)).detail, u"73% busy"_qs);
    }

    void aCacheWithinAnotherCountsOnce()
    {
        QCOMPARE(clearableBytes({cache("/c/Google/Chrome", 30), cache("/c/Google", 40)}), 40);
        QCOMPARE(clearableBytes({cache("/c/Goo", 30), cache("/c/Google", 40)}), 70);
        QCOMPARE(clearableBytes({cache("/c/a", 30), cache("/c/a", 30)}), 60);
    }

    void whatDevelopersPileUp()
    {
        const auto old = oldRuntimes(
            {{u"a"_qs, u"iOS 1"_qs, 1, 13}, {u"b"_qs, u"iOS 2"_qs, 1, 14}, {u"c"_qs, u"iOS 3"_qs, 1, {}}});
        QCOMPARE(old.size(), std::size_t(1));
        QCOMPARE(old.front().title, u"iOS 2"_qs);
        const std::vector<DockerRow> rows = {{u"Images"_qs, u"3GB (45%)"_qs}, {u"Volumes"_qs, u"1GB"_qs}};
        QCOMPARE(dockerRowTexts(rows),
                 (QList<DockerRowText>{{u"Images"_qs, u"3 GB"_qs, 0.75}, {u"Volumes"_qs, u"1 GB"_qs, 0.25}}));
        QCOMPARE(dockerRowTexts({{u"Images"_qs, u"0B"_qs}}).first().fraction, 0.0);
        StorageScans::Findings clutter;
        QVERIFY(clutter.isEmpty() && clutterText(clutter.items).isEmpty());
        clutter.docker.state = DeveloperCleanup::DockerState::notRunning;
        QVERIFY(!clutter.isEmpty()); // it has its own message
        QCOMPARE(
            clutterText({RemovableItem::of(DerivedData{500}), RemovableItem::of(DockerPrune{4'000'000'000})}),
            u"4 GB can be cleared"_qs);
    }

    void timesAreShownInTheLocalesWay()
    {
        struct Row {
            const char *locale;
            QString updated, snoozedUntil;
        };
        for (const Row &row :
             {Row{"en_US", u"9:41:07 PM"_qs, u"9:41 PM"_qs}, Row{"de_DE", u"21:41:07"_qs, u"21:41"_qs},
              Row{"fi_FI", u"21.41.07"_qs, u"21.41"_qs}, Row{"fr_CA", u"21 h 41 min 07 s"_qs, u"21 h 41"_qs},
              Row{"zh_TW", u"\u4e0b\u53489:41:07"_qs, u"\u4e0b\u53489:41"_qs},
              Row{"C", u"21:41:07"_qs, u"21:41:07"_qs}}) {
            const QLocale locale(QString::fromLatin1(row.locale));
            const QDateTime time(QDate(2026, 3, 4), QTime(21, 41, 7));
            // Some editions of the locales' data part the half of the day with a narrow blank.
            const auto shown = [](QString text) { return text.replace(QChar(0x202f), QLatin1Char(' ')); };
            QCOMPARE(shown(updatedText(time, locale)), u"Updated "_qs + row.updated);
            const double until = static_cast<double>(time.toSecsSinceEpoch());
            QVERIFY(shown(snoozeSentence(until, until - 1, locale)).endsWith(row.snoozedUntil + u'.'));
            QVERIFY(isSnoozed(until, until - 1) && !isSnoozed(until, until) && !isSnoozed({}, until));
        }
        QVERIFY(!updatedText({}, QLocale::c()).contains(u"Updated"_qs));
    }

    void thePanelStandsBesideItsItemOnTheScreen()
    {
        const QRect available(0, 24, 1'000, 752);
        for (const auto &[item, place] :
             {std::pair{QRect(500, 0, 40, 24), QPoint(379, 29)}, // below a bar above
              {QRect(500, 776, 40, 24), QPoint(379, 370)},
              {QRect(980, 0, 20, 24), QPoint(720, 29)},
              {QRect(0, 0, 20, 24), QPoint(0, 29)},
              {QRect(5'000, -900, 20, 24), QPoint(720, 24)}}) {
            QCOMPARE(popoverPosition(item, {280, 400}, available), place);
            // A panel that is too large shows its head.
            QCOMPARE(popoverPosition(item, {2'000, 2'000}, available), available.topLeft());
        }
    }

    void slidersStayOnTheirSteps()
    {
        const SliderSetting slider = {u"cpuRed"_qs, {}, {}, 10, 100, 5, 85, u"85%"_qs, Tint::red};
        const double endless = std::numeric_limits<double>::infinity();
        for (const auto &[wanted, value] :
             {std::pair{61.9, 60.0}, {62.6, 65.0}, {-20.0, 10.0}, {1e300, 100.0}, {endless, 85.0}}) {
            QCOMPARE(movedTo(slider, wanted).value, value);
            QCOMPARE(movedTo(slider, wanted).valueText, QString::number(value) + u'%');
        }
    }

    void onlyWholePathsAreKept()
    {
        for (const auto &[typed, path] : {std::pair{"/home/ann/Music", "/home/ann/Music"},
                                          {"  /home/ann/Music/ \n", "/home/ann/Music"},
                                          {"~", "/home/ann"},
                                          {"~/Music", "/home/ann/Music"},
                                          {"~bob/Music", ""}, // another's home
                                          {"file:///home/ann/My%20Music", "/home/ann/My Music"},
                                          {"https://example.invalid/x", ""},
                                          {"Music", ""},
                                          {"   ", ""},
                                          {"/home/../", ""}})
            QCOMPARE(excludedPath(QString::fromLatin1(typed), u"/home/ann"_qs).value_or(QString()),
                     QString::fromLatin1(path));
    }
};

QTEST_GUILESS_MAIN(PresentationTest)
#include "PresentationTest.moc"
