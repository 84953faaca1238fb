#include "Clutter.h"

#include "cleanup/CacheCleaner.h"
#include "cleanup/DiskUsage.h"
#include "cleanup/SideBySide.h"

#include <QtTest/QTest>

#include <future>
#include <latch>
#include <thread>

#include <csignal>

using namespace swabby;

namespace {

QString lines(const Clutter &mac, const std::vector<CacheEntry> &entries)
{
    QStringList words;
    for (const CacheEntry &entry : entries)
        words.append(QString(u"%1|%2|%3"_qs)
                         .arg(mac.shortened(QString::fromStdString(entry.path)), entry.description)
                         .arg(entry.sizeBytes));
    return words.join(u'\n');
}

} // namespace

class CacheCleanerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void diskUsage_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<qint64>("bytes");
        const auto row = [](const char *text, qint64 bytes) {
            QTest::newRow(QByteArray(text).simplified()) << QByteArray(text) << bytes;
        };
        row("2048\t/a folder\n", 2'097'152);
        row("2048 /a", 2'097'152);
        row("\t  7\t/a", 7'168);
        row("12\t/a\n34\t/b\n", 12'288);
        row("0\t/a", 0);
        row("-5\t/a", -5'120);
        row("+5\t/a", 5'120);
        row("+-5\t/a", 0);
        row("9007199254740991\t/a", 9'223'372'036'854'774'784);
        row("9007199254740992\t/a", 0);
        row("-9007199254740993\t/a", 0);
        row("99999999999999999999\t/a", 0);
        row("5.5\t/a", 0);
        row("5K\t/a", 0);
        row("du: /a: No such file", 0);
        row("", 0);
        row(" \t ", 0);
    }

    void diskUsage()
    {
        QFETCH(QByteArray, text);
        const std::int64_t bytes = parseDiskUsage(text.toStdString());
        QTEST(qint64(bytes), "bytes");
    }

    void knownPlaces()
    {
        const Clutter mac;
        const QString caches = u"Library/Caches/"_qs;
        for (const char *name :
             {"com.apple.Safari", "Google/Chrome", "Firefox", "Adobe/After Effects", "CocoaPods", "Cypress",
              "com.microsoft.VSCode.ShipIt", "ms-playwright", "dotslash", "node-gyp", "typescript",
              "composer", "pip", "Yarn", "puppeteer"})
            mac.addFolder(caches + QString::fromLatin1(name), 977);
        mac.addFolder(u".Trash"_qs, 977);
        const auto scanned = CacheCleaner::scan({*mac.machine, {}, {}});
        // Equal sizes keep the table's order.
        QCOMPARE(lines(mac, scanned),
                 u"~/.Trash|Trash — stuff you already deleted|1000448\n"
                 "~/Library/Caches/com.apple.Safari|Safari's temporary browsing files|1000448\n"
                 "~/Library/Caches/Google/Chrome|Chrome's temporary browsing files|1000448\n"
                 "~/Library/Caches/Firefox|Firefox's temporary browsing files|1000448\n"
                 "~/Library/Caches/Adobe/After Effects|After Effects temporary preview files|1000448\n"
                 "~/Library/Caches/CocoaPods|Coding tool cache (CocoaPods)|1000448\n"
                 "~/Library/Caches/Cypress|Coding tool cache (Cypress)|1000448\n"
                 "~/Library/Caches/com.microsoft.VSCode.ShipIt|VS Code leftover update files|1000448\n"
                 "~/Library/Caches/ms-playwright|Coding tool cache (Playwright)|1000448\n"
                 "~/Library/Caches/dotslash|Coding tool cache (dotslash)|1000448\n"
                 "~/Library/Caches/node-gyp|Coding tool cache (node-gyp)|1000448\n"
                 "~/Library/Caches/typescript|Coding tool cache (TypeScript)|1000448\n"
                 "~/Library/Caches/composer|Coding tool cache (Composer)|1000448\n"
                 "~/Library/Caches/pip|Coding tool cache (pip)|1000448\n"
                 "~/Library/Caches/Yarn|Coding tool cache (Yarn)|1000448\n"
                 "~/Library/Caches/puppeteer|Coding tool cache (Puppeteer)|1000448"_qs);
        QVERIFY(scanned.front().identity.isSameThing(*FileIdentity::of(mac.homePath(".Trash"))));
    }

    void whatCounts()
    {
        const Clutter mac;
        mac.addFolder(u".Trash"_qs, 976);                       // a megabyte not quite
        mac.writeFile(u"home/Library/Caches/pip"_qs, "4000\n"); // a file counts as existing
        mac.addFolder(u"Library/Caches/Yarn"_qs, 5000);
        QVERIFY(QFile::link(u"/nonexistent"_qs, mac.home() + u"/Library/Caches/Cypress"_qs));
        QCOMPARE(lines(mac, CacheCleaner::scan({*mac.machine, {}, {}})),
                 u"~/Library/Caches/Yarn|Coding tool cache (Yarn)|5120000\n"
                 "~/Library/Caches/pip|Coding tool cache (pip)|4096000"_qs);
        QCOMPARE(mac.runs().count(u"/usr/bin/du -sk ~/"_qs), 3); // none for what is not there
    }

    void unknownPlaces()
    {
        const Clutter mac;
        QVERIFY(CacheCleaner::scanUnknownCaches({*mac.machine, {}, {}}).empty()); // no folder of caches
        for (int size = 1; size <= 8; ++size)
            mac.addFolder(u"Library/Caches/maker %1"_qs.arg(size), 30'000 + size);
        mac.addFolder(u"Library/Caches/.hidden"_qs, 90'000);
        mac.addFolder(u"Library/Caches/Google/Chrome"_qs, 50'000);
        mac.addFolder(u"Library/Caches/Google"_qs, 60'000); // holds a known one, is none
        mac.addFolder(u"Library/Caches/com.apple.Safari"_qs, 99'000);
        mac.addFolder(u"Library/Caches/below"_qs, 19'531);
        mac.writeFile(u"home/Library/Caches/file"_qs, "95000\n");
        const auto found = CacheCleaner::scanUnknownCaches({*mac.machine, {}, {}});
        QStringList names;
        for (const CacheEntry &entry : found)
            names.append(entry.description);
        QCOMPARE(names.join(u','), u".hidden,Google,maker 8,maker 7,maker 6,maker 5,maker 4,maker 3"_qs);
        mac.addFolder(u"Library/Caches/Google"_qs, 19'532); // just above
        const auto less = CacheCleaner::scanUnknownCaches(
            {*mac.machine, {}, mac.excluding({"Library/Caches/maker 7", "Library/Caches/maker 8"})});
        QCOMPARE(less.back().description, u"Google"_qs);
        QCOMPARE(less.back().sizeBytes, 20'000'768);
    }

    void whatMustStayIsNotOffered()
    {
        const Clutter mac;
        mac.addFolder(u".Trash"_qs, 9'000);
        mac.addFolder(u".Trash/keep"_qs, 4'000);
        mac.addFolder(u".Trash/go"_qs, 2'000);
        mac.addFolder(u".Trash/go too"_qs, 1'000);
        mac.addFolder(u"Library/Caches/pip"_qs, 5'000);
        QFile::remove(mac.home() + u"/.Trash/.kib"_qs);
        const auto excludes = mac.excluding({".Trash/keep/inside", "Library/Caches/pip/wheels"});
        const auto entries = CacheCleaner::scan({*mac.machine, {}, excludes});
        QCOMPARE(lines(mac, entries), u"~/.Trash|Trash — stuff you already deleted|3072000"_qs);
        QCOMPARE(CacheCleaner::clean(*mac.machine, entries, excludes), std::vector<bool>{true});
        QCOMPARE(mac.asked(), u"empty trash ~/.Trash in ~\nkeep ~/.Trash/keep"_qs);
        QVERIFY(CacheCleaner::scan({*mac.machine, {}, mac.excluding({""})}).empty());
    }

    void cleaning()
    {
        const Clutter mac;
        mac.addTool(u"/usr/bin/env"_qs, "exit 1");
        for (const char *name :
             {".Trash", "Library/Caches/Yarn", "Library/Caches/pip", "Library/Caches/x/.Trash"})
            mac.addFolder(QString::fromLatin1(name), 2'000);
        std::vector<CacheEntry> entries = CacheCleaner::scan({*mac.machine, {}, {}});
        const auto trash = mac.homePath("Library/Caches/x/.Trash");
        entries.push_back({trash, u"x"_qs, 1, *FileIdentity::of(trash)});
        mac.disposal().refused = {mac.homePath("Library/Caches/pip")};
        QCOMPARE(CacheCleaner::clean(*mac.machine, entries, {}),
                 (std::vector<bool>{true, false, true, true}));
        QCOMPARE(mac.asked(), u"empty trash ~/.Trash in ~\n"
                              "delete ~/Library/Caches/pip in ~/Library/Caches\n"
                              "delete ~/Library/Caches/Yarn in ~/Library/Caches\n"
                              "empty ~/Library/Caches/x/.Trash in ~/Library/Caches"_qs);
        QVERIFY(mac.runs().endsWith(u"\n/usr/bin/env brew cleanup -q\n/usr/bin/env pip cache purge"_qs));
    }

    void whatMustStayByNowStays()
    {
        const Clutter mac;
        for (const char *name :
             {"Library/Caches/Yarn", "Library/Caches/composer", "Library/Caches/x/.Trash/mine"})
            mac.addFolder(QString::fromLatin1(name), 2'000);
        std::vector<CacheEntry> entries = CacheCleaner::scan({*mac.machine, {}, {}});
        const auto trash = mac.homePath("Library/Caches/x/.Trash");
        entries.push_back({trash, u"x"_qs, 1, *FileIdentity::of(trash)});
        const auto gone = CacheCleaner::clean(
            *mac.machine, entries, mac.excluding({"Library/Caches/Yarn/v6", "Library/Caches/x/.Trash/mine"}));
        QCOMPARE(mac.asked(), u"delete ~/Library/Caches/composer in ~/Library/Caches\n"
                              "empty ~/Library/Caches/x/.Trash in ~/Library/Caches\n"
                              "keep ~/Library/Caches/x/.Trash/mine"_qs);
        QCOMPARE(gone, (std::vector<bool>{true, false, true}));
    }

    void aStopLeavesWhatFollows()
    {
        const Clutter mac;
        mac.addTool(u"/usr/bin/env"_qs, ":");
        mac.addFolder(u"Library/Caches/pip"_qs, 2'000);
        mac.addFolder(u"Library/Caches/Yarn"_qs, 1'000);
        const auto entries = CacheCleaner::scan({*mac.machine, {}, {}});
        StopSource stop;
        stop.requestStop();
        QCOMPARE(CacheCleaner::clean(*mac.machine, entries, {}, stop.token()),
                 (std::vector<bool>{false, false}));
        QCOMPARE(mac.asked(), QString());
        QVERIFY(!mac.runs().contains(u"/usr/bin/env"_qs));
    }

    void packageManagers_data()
    {
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("excluded");
        QTest::addColumn<bool>("onlyWhenChosen");
        QTest::addColumn<QString>("runs");
        const QString brew = u"/usr/bin/env brew cleanup -q"_qs;
        const QString pip = u"/usr/bin/env pip cache purge"_qs;
        QTest::newRow("always") << QString() << QString() << false << brew + u'\n' + pip;
        QTest::newRow("pip's must stay") << u"pip"_qs << u"pip/wheels"_qs << false << brew;
        QTest::newRow("brew's must stay") << QString() << u"Homebrew"_qs << false << pip;
        QTest::newRow("all must stay") << QString() << u"."_qs << false << QString();
        QTest::newRow("nothing chosen") << u"Yarn"_qs << QString() << true << QString();
        QTest::newRow("pip's chosen") << u"pip"_qs << QString() << true << pip;
        QTest::newRow("brew's chosen") << u"Homebrew"_qs << QString() << true << brew;
        QTest::newRow("chosen and must stay") << u"pip"_qs << u"pip"_qs << true << QString();
    }

    void packageManagers()
    {
        QFETCH(QString, chosen);
        QFETCH(QString, excluded);
        QFETCH(bool, onlyWhenChosen);
        const Clutter mac;
        mac.addTool(u"/usr/bin/env"_qs, ":");
        for (PackageCleanup &cleanup : mac.machine->cleanup.packageCleanups)
            cleanup.onlyWhenChosen = onlyWhenChosen;
        const auto caches = mac.homePath("Library/Caches");
        std::vector<CacheEntry> entries;
        if (!chosen.isEmpty())
            entries.push_back({caches / chosen.toStdString(), chosen});
        const ExcludeList excludes =
            excluded.isEmpty() ? ExcludeList() : ExcludeList({caches / excluded.toStdString()});
        CacheCleaner::clean(*mac.machine, entries, excludes);
        QTEST(mac.runs(), "runs");
    }

    void toolsThatDoNotAnswer()
    {
        const Clutter mac;
        mac.addFolder(u"Library/Caches/pip"_qs, 2'000);
        for (const char *script : {"exit 1", "echo nothing", "printf '5000\\t\\377'",
                                   "head -c 5000000 /dev/zero | tr '\\0' 7", "echo 5000 >&2"}) {
            mac.addTool(u"/usr/bin/du"_qs, script);
            QVERIFY2(CacheCleaner::scan({*mac.machine, {}, {}}).empty(), script);
        }
        QVERIFY(QFile::remove(mac.folder() + u"/root/usr/bin/du"_qs));
        QVERIFY(CacheCleaner::scan({*mac.machine, {}, {}}).empty());
    }

    void aStopEndsTheTools()
    {
        const Clutter mac;
        mac.addTool(u"/usr/bin/du"_qs, R"(echo $$ >"$MACHINE_DIR/pid.$$" && exec tail -f /dev/null)");
        for (const char *name : {"pip", "Yarn", "composer", "Cypress", "dotslash"})
            mac.addFolder(u"Library/Caches/"_qs + QString::fromLatin1(name), 2'000);
        StopSource stop;
        auto scan = std::async(std::launch::async, [&] {
            return CacheCleaner::scan({*mac.machine, {.stop = stop.token(), .progress = {}}, {}});
        });
        const QDir folder(mac.folder());
        const auto pids = [&] { return folder.entryList({u"pid.*"_qs}); };
        QVERIFY(waitUntil([&] { return !pids().isEmpty(); }));
        stop.requestStop();
        QVERIFY(scan.get().empty());
        QVERIFY(pids().size() <= int(std::max(1U, std::thread::hardware_concurrency()))); // no more begun
        for (const QString &name : pids())
            QVERIFY(::kill(name.mid(4).toInt(), 0) != 0);
    }

    void progress()
    {
        const Clutter mac;
        for (int number = 0; number < 30; ++number)
            mac.addFolder(u"Library/Caches/maker %1"_qs.arg(number), 30'000);
        std::vector<ScanProgress> heard;
        CacheCleaner::scanUnknownCaches(
            {*mac.machine,
             {.stop = {}, .progress = [&](const ScanProgress &now) { heard.push_back(now); }},
             {}});
        QCOMPARE(heard.size(), 30U);
        for (std::size_t index = 0; index < heard.size(); ++index) {
            QCOMPARE(heard[index].done, std::int64_t(index + 1));
            QVERIFY(heard[index].total == 30 && heard[index].what.startsWith(u"maker "_qs));
        }
    }

    void sideBySideIsSideBySide()
    {
        std::vector<std::atomic<int>> calls(1'000);
        sideBySide(calls.size(), [&](std::size_t index) { ++calls[index]; });
        QVERIFY(std::all_of(calls.begin(), calls.end(), [](const auto &count) { return count == 1; }));
        sideBySide(0, [](std::size_t) { qFatal("there is nothing to do"); });
        if (std::thread::hardware_concurrency() < 2)
            QSKIP("one processor does one thing at a time");
        std::latch both(2); // each waits for the other
        sideBySide(2, [&](std::size_t) { both.arrive_and_wait(); });
    }
};

QTEST_GUILESS_MAIN(CacheCleanerTest)
#include "CacheCleanerTest.moc"
