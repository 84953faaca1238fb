#include "ui/presentation/BatteryText.h"
#include "ui/presentation/Gauges.h"
#include "ui/presentation/HealthText.h"
#include "ui/presentation/NetworkText.h"
#include "ui/presentation/PlainWords.h"
#include "ui/presentation/ProcessText.h"
#include "ui/presentation/Sections.h"
#include "ui/presentation/SpeedHistory.h"
#include "ui/presentation/StartupText.h"

#include <QtTest/QTest>

#include <cmath>

using namespace swabby;

namespace {

ProcessSample process(const QString &name, double cpu = 0, double energy = 0, std::int64_t network = 0)
{
    return {7, name, u"/bin/x"_qs, cpu, 1, 1'500'000'000, false, energy, network};
}

} // namespace

class PresentationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void gaugesTurnAtTheirLimits_data()
    {
        QTest::addColumn<double>("cpu");
        QTest::addColumn<double>("memory");
        QTest::addColumn<double>("usedDisk");
        QTest::addColumn<QList<Tint>>("tints");
        const auto row = [](const char *name, double cpu, double memory, double disk,
                            const QList<Tint> &tints) {
            QTest::newRow(name) << cpu << memory << disk << tints;
        };
        row("just below", 29.9, 0.6999, 0.8999, {Tint::accent, Tint::accent, Tint::accent});
        row("orange", 30, 0.7, 0.5, {Tint::orange, Tint::orange, Tint::accent});
        row("below red", 69.9, 0.8499, 0.5, {Tint::orange, Tint::orange, Tint::accent});
        row("red", 70, 0.85, 0.9, {Tint::red, Tint::red, Tint::red});
        row("beyond everything", 240, 3, 1, {Tint::red, Tint::red, Tint::red});
    }
    void gaugesTurnAtTheirLimits()
    {
        QFETCH(double, cpu);
        QFETCH(double, memory);
        QFETCH(double, usedDisk);
        QFETCH(QList<Tint>, tints);
        SystemStats stats;
        stats.cpuUsagePercent = cpu;
        stats.memTotalBytes = 1'000'000;
        stats.memUsedBytes = static_cast<std::uint64_t>(std::llround(memory * 1'000'000));
        stats.diskTotalBytes = 1'000'000;
        stats.diskFreeBytes = std::llround((1 - usedDisk) * 1'000'000);
        const QList<Gauge> gauges = overviewGauges(stats, true);
        QCOMPARE(gauges.size(), 3); // and none for a battery that is not there
        for (int index = 0; index < 3; ++index) {
            QCOMPARE(gauges.at(index).tint, tints.at(index));
            QVERIFY(gauges.at(index).fraction >= 0 && gauges.at(index).fraction <= 1);
        }
    }

    void gaugesSpeakPlainly()
    {
        SystemStats stats;
        stats.cpuUsagePercent = 46.9;
        stats.memUsedBytes = 12'025'908'429;
        stats.memTotalBytes = 17'179'869'184;
        stats.diskFreeBytes = 112'400'000'000;
        stats.diskTotalBytes = 500'000'000'000;
        stats.batteryPercent = 84;
        stats.timeRemainingMinutes = 135;
        QStringList words;
        for (const Gauge &gauge : overviewGauges(stats, true))
            words.append(gauge.title + u": "_qs + gauge.value + u' ' + gauge.rest);
        QCOMPARE(words, QStringList({u"Speed: 46% busy "_qs, u"Memory: 11.2 GB / 16 GB"_qs,
                                     u"Storage: 112.4 GB free"_qs, u"Battery: 84% · 2h 15m"_qs}));

        stats.isCharging = true;
        stats.timeRemainingMinutes.reset();
        const Gauge battery = overviewGauges(stats, true).last();
        QCOMPARE(battery.title, u"Battery (charging)"_qs);
        QCOMPARE(battery.symbol, u"battery.100.bolt"_qs);
        QCOMPARE(battery.rest, QString());
        // Until there is a figure there is no zero in its place.
        QVERIFY(!overviewGauges(stats, false).first().rest.contains(u'0'));
        QCOMPARE(overviewGauges(stats, false).first().value, QString());
        // An unknown total counts as full.
        QCOMPARE(usedStorageFraction({}), 1.0);
    }

    void processRowsFollowTheirMode_data()
    {
        QTest::addColumn<ProcessRowMode>("mode");
        QTest::addColumn<double>("figure");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("isEmphasized");
        const auto row = [](const char *name, ProcessRowMode mode, double figure, const QString &value,
                            bool is) { QTest::newRow(name) << mode << figure << value << is; };
        row("half", ProcessRowMode::activity, 50, u"50%"_qs, false);
        row("above half", ProcessRowMode::activity, 50.1, u"50%"_qs, true);
        row("rounded", ProcessRowMode::activity, 36.6, u"37%"_qs, false);
        row("low", ProcessRowMode::battery, 9.99, u"Low"_qs, false);
        row("moderate", ProcessRowMode::battery, 10, u"Moderate"_qs, false);
        row("still moderate", ProcessRowMode::battery, 39.9, u"Moderate"_qs, false);
        row("high", ProcessRowMode::battery, 40, u"High"_qs, true);
        row("quiet line", ProcessRowMode::network, 999'999, u"1 MB/s"_qs, false);
        row("busy line", ProcessRowMode::network, 1'000'000, u"1 MB/s"_qs, true);
    }
    void processRowsFollowTheirMode()
    {
        QFETCH(ProcessRowMode, mode);
        QFETCH(double, figure);
        const ProcessSample sample = process(u"Mill"_qs, figure, figure, static_cast<std::int64_t>(figure));
        const ProcessRowText row = processRowText(sample, mode, true);
        QTEST(row.value, "value");
        QTEST(row.isEmphasized, "isEmphasized");
        QCOMPARE(row.detail, mode == ProcessRowMode::network ? row.value : u"1.5 GB"_qs);
        QVERIFY(row.isPinned);
        QCOMPARE(row.trustSymbol, row.trust > 49 ? u"star.fill"_qs : u"star"_qs);
    }

    void searchKeepsItsBlanks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("found");
        QTest::newRow("nothing") << QString() << 3;
        QTest::newRow("blanks only") << u"   "_qs << 3;
        QTest::newRow("any case") << u"MILL"_qs << 2;
        QTest::newRow("a blank in front") << u" m"_qs << 1;
        QTest::newRow("unknown") << u"zebra"_qs << 0;
    }
    void searchKeepsItsBlanks()
    {
        QFETCH(QString, text);
        const QList<ProcessSample> all = {process(u"Mill"_qs), process(u"Wind Mill"_qs), process(u"cat"_qs)};
        QTEST(static_cast<int>(filteredProcesses(all, text).size()), "found");
    }

    void namesAreMadeHarmless_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("letter");
        const auto row = [](const char *name, const QString &given, const QString &line,
                            const QString &letter) { QTest::newRow(name) << given << line << letter; };
        row("plain", u"mds_stores"_qs, u"mds_stores"_qs, u"M"_qs);
        row("two lines", u"a\nb\u2028c"_qs, u"a b c"_qs, u"A"_qs);
        row("turned around", u"x\u202Egpj.exe"_qs, u"x gpj.exe"_qs, u"X"_qs);
        row("markup stays text", u"<img src='http://x'>"_qs, u"<img src='http://x'>"_qs, u"I"_qs);
        row("no letter", u"---"_qs, u"---"_qs, u"?"_qs);
        row("beyond the first plane", u"\U0001D538bc"_qs, u"\U0001D538bc"_qs, u"\U0001D538"_qs);
        row("nothing", QString(), QString(), u"?"_qs);
    }
    void namesAreMadeHarmless()
    {
        QFETCH(QString, name);
        QTEST(oneLine(name), "line");
        QTEST(tileLetter(name), "letter");
        QCOMPARE(tileColorIndex(name), tileColorIndex(QString(name)));
    }

    void issuesOfferWhatTheirActionSays()
    {
        const ProcessSample safari = process(u"Safari\n"_qs);
        HealthIssue speed = {
            HealthLevel::red, MainSection::speed, u"w"_qs, {}, {}, OpenSection{MainSection::speed}};
        HealthIssue storage = {HealthLevel::yellow, MainSection::storage, {}, {}, {}, KillProcess{safari}};
        const QList<IssueCard> cards = issueCards({storage, speed});
        QCOMPARE(cards.size(), 2);
        QCOMPARE(cards.first().actionLabel, u"Quit Safari "_qs);
        QVERIFY(cards.first().isDestructive);
        QCOMPARE(cards.last().actionLabel, u"Look into it"_qs);
        QCOMPARE(cards.last().tint, Tint::red);
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
        QCOMPARE(averageSpeedText({}), QString());
    }

    void theBatteryInWords()
    {
        SystemStats stats;
        QVERIFY(!batterySummary(stats).isPresent);
        stats.batteryPercent = 84;
        stats.timeRemainingMinutes = 312;
        QCOMPARE(batterySummary(stats).headline, u"On battery · 5h 12m left"_qs);
        stats.isCharging = true;
        QCOMPARE(batterySummary(stats).headline, u"Charging · 5h 12m until full"_qs);
        stats.timeRemainingMinutes.reset();
        QCOMPARE(batterySummary(stats).headline, u"Charging"_qs);
        QCOMPARE(batterySummary(stats).facts.size(), 1); // nothing is made up about health and cycles
    }

    void networkAndStartupInWords()
    {
        const QList<ProcessSample> users = {process(u"a"_qs, 0, 0, 4'200'000), process(u"b"_qs, 0, 0, 0)};
        QCOMPARE(totalNetworkRate(users), u"4.2 MB/s"_qs);
        QCOMPARE(networkSentence(users), u"moving right now, 1 program"_qs);
        QCOMPARE(browserRowTexts({{u"Fox"_qs, 3, 1'880'000'000, 36.6}}).first(),
                 (BrowserRowText{u"Fox"_qs, u"3 tabs & helpers"_qs, u"1.88 GB"_qs, u"37% busy"_qs}));

        LoginItem orphan = {u"old"_qs, {},   u"/gone"_qs, LoginItemScope::userAgent, true, true,
                            true,      true, 12};
        LoginItem vouchedFor = {u"music"_qs, {},    {}, LoginItemScope::classicLoginItem, true, false,
                                true,        false, {}};
        const auto review = startupRowTexts({vouchedFor, orphan}, true);
        QCOMPARE(review.size(), 1);
        QCOMPARE(review.first().badge, u"Left behind"_qs);
        const auto rest = startupRowTexts({vouchedFor, orphan}, false);
        QCOMPARE(rest.first().badge, QString());
        QCOMPARE(rest.first().detail, u"Opens when you log in"_qs);
    }

    void everySidebarRowHasItsOwnKey()
    {
        QStringList shortcuts;
        for (const SectionRow &row : sectionRows())
            shortcuts.append(row.shortcut);
        QCOMPARE(shortcuts.first(), u"Ctrl+1"_qs);
        QVERIFY(shortcuts.contains(u"Ctrl+3"_qs)); // a section keeps its digit whichever others have a page
        QCOMPARE(shortcuts.removeDuplicates(), 0);
    }
};

QTEST_APPLESS_MAIN(PresentationTest)
#include "PresentationTest.moc"
