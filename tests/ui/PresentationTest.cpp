#include "health/HealthRules.h"
#include "support/Table.h"
#include "ui/presentation/BatteryText.h"
#include "ui/presentation/CheckText.h"
#include "ui/presentation/CleanupText.h"
#include "ui/presentation/DeveloperText.h"
#include "ui/presentation/ExplainText.h"
#include "ui/presentation/Gauges.h"
#include "ui/presentation/HealthText.h"
#include "ui/presentation/NetworkText.h"
#include "ui/presentation/NoticeText.h"
#include "ui/presentation/PlainWords.h"
#include "ui/presentation/PopoverText.h"
#include "ui/presentation/ProcessText.h"
#include "ui/presentation/Sections.h"
#include "ui/presentation/SettingsText.h"
#include "ui/presentation/SpeedHistory.h"
#include "ui/presentation/StartupText.h"
#include "ui/presentation/WelcomeText.h"
#include "ui/presentation/WindowPlace.h"
#include "ui/presentation/Words.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>
#include <limits>

using namespace swabby;

namespace {

ProcessSample process(const QString &name, double cpu = 0, double energy = 0, std::int64_t network = 0)
{
    return {7, name, u"/bin/"_qs + name, cpu, 1, 1'500'000'000, false, energy, network};
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
    void aMissingModuleIsNamed()
    {
        compareTable(R"(
qrc:/a.qml:3:1: module "QtQuick.Window" is not installed | QtQuick.Window, qml6-module-qtquick-window
<Unknown File>: module "QtQml.WorkerScript" is not installed\n | QtQml.WorkerScript, qml6-module-qtqml-workerscript
module "QtQuick" plugin "qtquick2plugin" not found | QtQuick, qml6-module-qtquick
qrc:/a.qml:9:2: Expected token\nand more | none
)",
                     [](const Cells &row) {
                         static const QRegularExpression names(u"module ([^,]+), .* (qml6-[a-z0-9-]+)$"_qs);
                         const QString text = unopenedText(row.text(0));
                         const auto found = names.match(text);
                         return text.contains(u'\n') ? text
                                : found.hasMatch()   ? found.captured(1) + u", "_qs + found.captured(2)
                                                     : u"none"_qs;
                     });
    }

    void gaugesAndChipsTurnAtLimitsOfTheirOwn()
    {
        // The load, the memory and the storage in use, and a letter of its tint for each gauge and each chip.
        compareTable(fixture(u"ui/gauges_and_chips.txt"_qs), [](const Cells &row) {
            const SystemStats stats = machineWith(row.number(0), row.number(1), row.number(2));
            const auto letters = [](const auto &shown) {
                QString tints;
                for (const auto &one : shown)
                    tints += one.tint == Tint::red ? u'r' : one.tint == Tint::orange ? u'o' : u'a';
                return tints;
            };
            const QList<Gauge> gauges = overviewGauges(stats, true);
            const QList<PopoverChip> chips = popoverChips(stats, true);
            for (const Gauge &gauge : gauges)
                if (gauge.fraction < 0 || gauge.fraction > 1)
                    return u"a bar that is too long"_qs;
            return QStringList{letters(gauges), letters(chips), chips[0].value, chips[1].value}.join(u' ');
        });
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
        QCOMPARE(batterySummary(stats, {}).headline, u"On battery · 2h 15m left"_qs);
        stats.isCharging = true;
        QCOMPARE(popoverChips(stats, true).at(3).tint, Tint::green);
        QCOMPARE(overviewGauges(stats, true).at(3).title, u"Battery (charging)"_qs);
        QCOMPARE(batterySummary(stats, {}).headline, u"Charging · 2h 15m until full"_qs);
        // Nothing is made up about what is not known.
        stats.timeRemainingMinutes.reset();
        QCOMPARE(words(3), u"84% "_qs);
        QCOMPARE(batterySummary(stats, {}).headline, u"Charging"_qs);
        QCOMPARE(batterySummary(stats, {}).facts.size(), 1);
        QCOMPARE(batterySummary({}, {}).headline, u"This Mac has no battery"_qs);
        const Gauge unknown = overviewGauges(stats, false).first();
        QVERIFY(unknown.value.isEmpty() && !unknown.rest.contains(u'0'));
        QCOMPARE(popoverChips({}, false).first().value, u"…"_qs);
        QCOMPARE(usedStorageFraction({}), 1.0);
    }

    void processRowsFollowTheirMode()
    {
        const std::map<QByteArray, ProcessRowMode> modes = {{"activity", ProcessRowMode::activity},
                                                            {"battery", ProcessRowMode::battery},
                                                            {"network", ProcessRowMode::network}};
        compareTable(fixture(u"ui/process_rows.txt"_qs), [&](const Cells &row) {
            const double figure = row.number(1);
            const ProcessSample mill = process(u"Mill"_qs, figure, figure, static_cast<std::int64_t>(figure));
            const ProcessRowText text = processRowText(mill, modes.at(row[0]), true, {});
            if (text.detail != (row[0] == "network" ? text.value : u"1.5 GB"_qs) ||
                text.trustSymbol != (text.trust > 49 ? u"star.fill"_qs : u"star"_qs))
                return text.detail + text.trustSymbol;
            return text.value + (text.isEmphasized ? u"!"_qs : QString()); // emphasized
        });
    }

    void whatIsKnownNeedsNoAssistant()
    {
        ProcessSample script = process(u"python3.11"_qs, 14);
        script.path = u"/usr/bin/python3.11"_qs;
        script.title = u"back-up"_qs;
        script.owner = u"the system"_qs;
        ProcessSample helper = process(u"Mill Helper"_qs);
        helper.path = u"/Applications/Mill.app/Contents/Mill Helper.app/Contents/MacOS/Mill Helper"_qs;
        const LoginItem item{u"org.mill"_qs, u"/a.plist"_qs, u"/mill"_qs, {}, false, true, false, false, {}};
        MachineWords linux;
        linux.packagedPrograms = u"them"_qs;
        const ProgramOrigin origin{u"root"_qs, u"the system"_qs, u"/opt/back-up"_qs, u"back-up 2"_qs, 40'000};
        const auto said = [](const ExplainFact &fact) { return fact.label + u'=' + fact.value; };
        const QMap<QByteArray, QString> facts = {
            {"unknown", lines(explainFacts({script}, {}, 0, linux), said)},
            {"known", lines(explainFacts({script}, origin, 50'000, linux), said)},
            {"elsewhere", lines(explainFacts({helper}, ProgramOrigin(), 0, {}), said)},
            {"item", lines(explainFacts({item}, ProgramOrigin(), 0, linux), said)}};
        compareTable(fixture(u"ui/what_is_known.txt"_qs), [&](const Cells &row) { return facts[row[0]]; });
        for (const char *wanted : {"BACK", "python"})
            QCOMPARE(filteredProcesses({helper, script}, QLatin1String(wanted)).size(), 1);
        QCOMPARE(processRowText(script, {}, false, {}).detail,
                 u"1.5 GB · python3.11 · belongs to the system"_qs);
    }

    void whatIsNotOnesOwnSaysWhoseItIs()
    {
        ProcessSample cron = process(u"cron\n"_qs);
        cron.owner = u"the system"_qs;
        QVERIFY(!processRowText(cron, ProcessRowMode::network, false, {}).canQuit);
        QCOMPARE(topProcessTexts({cron}, {}, {}).first().detail, u"1.5 GB memory · belongs to the system"_qs);
        QVERIFY(explainText({cron}, {}).actionLabel.isEmpty());
        QCOMPARE(notQuitHereText(cron), u"cron  belongs to the system, so it is not quit here."_qs);
        using namespace Quitting;
        const auto said = [&](Means means, Outcome outcome) { return quitText(cron, means, outcome); };
        QCOMPARE(said(Means::kill, Outcome::notTold),
                 u"cron  is still running: it belongs to the system."_qs);
        QCOMPARE(said(Means::kill, Outcome::ended) + said(Means::question, Outcome::told), QString());
        QVERIFY(said(Means::question, Outcome::isAsked).contains(u"may be asking you something"_qs));
        QVERIFY(said(Means::question, Outcome::runsOn).contains(u"quit it again"_qs));
        QVERIFY(said(Means::terminate, Outcome::runsOn).contains(u"Force Quit"_qs));
        QVERIFY(said(Means::kill, Outcome::runsOn).contains(u"not let go"_qs));
    }

    void searchKeepsItsBlanks()
    {
        const QList<ProcessSample> all = {process(u"Mill"_qs), process(u"Wind Mill"_qs), process(u"cat"_qs)};
        for (const auto &[text, found] : {std::pair{"", 3}, {"   ", 3}, {"MILL", 2}, {" m", 1}, {"zebra", 0}})
            QCOMPARE(filteredProcesses(all, QString::fromLatin1(text)).size(), found);
    }

    void namesAreMadeHarmless()
    {
        compareTable(fixture(u"ui/names.txt"_qs),
                     [](const Cells &row) { return oneLine(row.text(0)) + u' ' + tileLetter(row.text(0)); });
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
        QCOMPARE(averageSpeedText(history, now), u"Avg 42%"_qs); // 50, 100, 20, 10 and 30
    }

    void startupItemsAndSections()
    {
        QList<QString> shortcuts;
        for (const SectionRow &row : sectionRows(Machine()))
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
        QCOMPARE(copies.details().size(), 2);
        QCOMPARE(copies.details().first().fate, u"stays"_qs);
        QCOMPARE(copies.details().last().place, u"~/Desktop"_qs);
        // What lies nowhere has nothing to show.
        QVERIFY(removableRowText(RemovableItem::of(DockerPrune{1}), false, {}).details().isEmpty());
        RemovableRowText hostile = removableRowText(
            RemovableItem::of(SimulatorRuntimeInfo{u"i"_qs, u"a\nb\u202e"_qs, 1, {}}), false, {});
        QCOMPARE(hostile.title, u"a b "_qs);
        addVerdict(hostile, {{}, true, u"An ordinary\ncache."_qs});
        QVERIFY(!hostile.badgeWarns);
        QCOMPARE(hostile.subtitle, u"Suggested · An ordinary cache."_qs);
        addVerdict(hostile, {{}, false, u"Odd."_qs});
        QVERIFY(hostile.badgeWarns);
    }

    void searchesInWords()
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

    void whatIsListedInWords()
    {
        const RemovableItem one = cache("/c/a", 1'000'000);
        const RemovableItem two = cache("/c/b", 2'000'000);
        const QList<ProcessSample> users = {process(u"a"_qs, 0, 0, 4'200'000), process(u"b"_qs, 0, 0, 0)};
        const BrowserRowText fox = browserRowTexts({{u"Fox"_qs, 3, 1'880'000'000, 36.6}}, {}).first();
        LoginItem orphan, vouchedFor;
        vouchedFor.scope = LoginItemScope::classicLoginItem;
        orphan.plistPath = u"/agents/org.fox.plist"_qs;
        vouchedFor.isAppleSigned = orphan.isAppleSigned = orphan.isOrphaned = true;
        const auto review = startupRowTexts({vouchedFor, orphan}, true, {});
        const auto rest = startupRowTexts({vouchedFor, orphan}, false, {});
        const auto old = oldRuntimes(
            {{u"a"_qs, u"iOS 1"_qs, 1, 13}, {u"b"_qs, u"iOS 2"_qs, 1, 14}, {u"c"_qs, u"iOS 3"_qs, 1, {}}});
        const auto docker = [](const std::vector<DockerRow> &rows) {
            return lines(dockerRowTexts(rows),
                         [](const DockerRowText &row) {
                             return row.kind + u", "_qs + row.size + u", "_qs + QString::number(row.fraction);
                         })
                .replace(u'\n', u"; "_qs);
        };
        const std::map<QByteArray, QString> said = {
            {"nothing queued", queueText({})},
            {"one queued", queueText({one})},
            {"two queued", queueText({one, two})},
            {"one back", putBackText(1, 0)},
            {"two back", putBackText(2, 0)},
            {"one not back", putBackText(2, 1)},
            {"network", totalNetworkRate(users) + u' ' + networkSentence(users)},
            {"a browser", QStringList{fox.name, fox.detail, fox.memory, fox.load}.join(u", "_qs)},
            {"a busy program", watchedText(process({}, 73.9), {}).detail},
            {"a startup item left behind",
             review.size() == 1 ? review.first().label + review.first().badge : QString()},
            {"a startup item", rest.first().badge + rest.first().detail},
            {"an old runtime", old.size() == 1 ? old.front().title : QString()},
            {"Docker", docker({{u"Images"_qs, u"3GB (45%)"_qs}, {u"Volumes"_qs, u"1GB"_qs}})},
            {"an empty Docker", docker({{u"Images"_qs, u"0B"_qs}})},
            {"no clutter", clearableText({RemovableItem::of(DockerPrune{0})})},
            {"a row of it", networkRowTexts({users.first()}, users + users, {}, {}).first().detail},
            {"some clutter", clearableText({RemovableItem::of(DockerPrune{4'000'000'000}), one,
                                            RemovableItem::of(DerivedData{500})})},
            {"used by one kind", clearableOfUsedText({one, one, RemovableItem::of(DockerPrune{0})})},
            {"nothing removed since", removedSinceText({})},
            {"removed since", removedSinceText({two})},
            {"volumes that stay", dockerNoteText({{u"Local Volumes"_qs, u"1GB"_qs}})},
            {"no volumes", dockerNoteText({{u"Local Volumes"_qs, u"0B"_qs}, {u"Images"_qs, u"1GB"_qs}})}};
        compareTable(fixture(u"ui/in_words.txt"_qs), [&](const Cells &row) { return said.at(row[0]); });
    }

    void aDockerThatDoesNotRunIsNoEmptyPage()
    {
        StorageScans::Findings clutter;
        QVERIFY(clutter.isEmpty());
        clutter.docker.state = DeveloperCleanup::DockerState::notRunning;
        QVERIFY(!clutter.isEmpty()); // it has its own message
    }

    void timesAreShownInTheLocalesWay()
    {
        const QDateTime time(QDate(2026, 3, 4), QTime(21, 41, 7));
        const double until = static_cast<double>(time.toSecsSinceEpoch());
        compareTable(fixture(u"ui/times.txt"_qs), [&](const Cells &row) {
            const QLocale locale(row.text(0));
            const QString snoozed = snoozeSentence(until, until - 1, true, locale).section(u"until "_qs, 1);
            // Some editions of the locales' data part the half of the day with a narrow blank.
            return QString(updatedText(time, locale) + u", "_qs + snoozed).replace(QChar(0x202f), u' ');
        });
        QVERIFY(isSnoozed(until, until - 1) && !isSnoozed(until, until) && !isSnoozed({}, until));
        QVERIFY(!updatedText({}, QLocale::c()).contains(u"Updated"_qs));
    }

    void thePanelStandsBesideItsItemOnTheScreen()
    {
        compareTable(fixture(u"ui/panel_places.txt"_qs), [](const Cells &row) {
            const QRect item(int(row.number(1)), int(row.number(2)), int(row.number(3)), int(row.number(4)));
            const QRect available(0, 24, 1'000, 752);
            const QPoint place = popoverPosition(item, {280, 400}, available);
            // A panel that is too large shows its head.
            return popoverPosition(item, {2'000, 2'000}, available) == available.topLeft()
                       ? u"%1 %2"_qs.arg(place.x()).arg(place.y())
                       : u"no head"_qs;
        });
    }

    void aWindowComesBackWhereItCanBeSeen()
    {
        compareTable(fixture(u"ui/window_places.txt"_qs), [](const Cells &row) {
            const auto kept = windowPlaceFrom(QJsonDocument::fromJson(row[1]).object());
            if (!kept)
                return u"none"_qs;
            if (windowPlaceFrom(jsonOf(*kept)) != kept)
                return u"kept otherwise"_qs;
            const QList<QRect> screens = {{0, 24, 1'000, 752}, {1'000, 0, 1'600, 1'200}};
            const WindowPlace place = placedOn(screens, *kept, {820, 560});
            const QString corner =
                place.corner ? u"%1,%2"_qs.arg(place.corner->x()).arg(place.corner->y()) : u"somewhere"_qs;
            return corner + u" %1x%2"_qs.arg(place.size.width()).arg(place.size.height()) +
                   (place.isMaximized ? u" maximized"_qs : QString());
        });
    }

    void whatIsTypedAndMovedIsTakenAsItShould()
    {
        compareTable(fixture(u"ui/sliders.txt"_qs), [](const Cells &row) {
            const SliderSetting beside = {row.text(2), {}, {}, {}, row.number(3), {}, Tint::orange};
            const SliderSetting slider = {row.text(0), {}, {}, {0.5, 1, 2, 5}, 3, {}, Tint::red};
            return movedTo(slider, row.number(1), {beside}).valueText;
        });
        compareTable(fixture(u"ui/excluded_paths.txt"_qs), [](const Cells &row) {
            return excludedPath(row.text(0), u"/home/ann"_qs).value_or(u"none"_qs);
        });
    }
};

QTEST_GUILESS_MAIN(PresentationTest)
#include "PresentationTest.moc"
