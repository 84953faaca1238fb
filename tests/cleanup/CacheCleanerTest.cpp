#include "Clutter.h"

#include "cleanup/CacheCleaner.h"
#include "cleanup/DiskUsage.h"
#include "cleanup/SideBySide.h"
#include "support/Table.h"

#include <QtTest/QTest>

#include <future>
#include <latch>
#include <thread>

#include <csignal>

using namespace swabby;

namespace {

QString found(const Clutter &mac, const std::vector<CacheEntry> &entries)
{
    return lines(entries, [&](const CacheEntry &entry) {
        const QString path = mac.shortened(QString::fromStdString(entry.path));
        return QString(u"%1|%2|%3"_qs).arg(path, entry.description).arg(entry.sizeBytes);
    });
}

} // namespace

class CacheCleanerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void diskUsage()
    {
        compareTable(fixture(u"cleanup/disk_usage.txt"_qs),
                     [](const Cells &row) { return QString::number(parseDiskUsage(row.string(0))); });
    }

    void knownPlaces()
    {
        // Equal sizes keep the table's order.
        const QString known = QString::fromUtf8(fixture(u"cleanup/known_places.txt"_qs)).trimmed();
        const Clutter mac;
        for (const QString &line : known.split(u'\n'))
            mac.addFolder(line.section(u'|', 0, 0).mid(2), 977);
        const auto scanned = CacheCleaner::scan({*mac.machine, {}, {}});
        QCOMPARE(found(mac, scanned), known);
        QVERIFY(scanned.front().identity.isSameThing(*FileIdentity::of(mac.homePath(".Trash"))));
    }

    void whatCounts()
    {
        const ClutterScene mac(u"cleanup/what_counts.txt"_qs);
        QVERIFY(QFile::link(u"/nonexistent"_qs, mac.home() + u"/Library/Caches/Cypress"_qs));
        QCOMPARE(found(mac, CacheCleaner::scan({*mac.machine, {}, {}})), mac.expected);
        QCOMPARE(mac.runs().count(u"/usr/bin/du -sk ~/"_qs), 3); // none for what is not there
    }

    void unknownPlaces()
    {
        QVERIFY(CacheCleaner::scanUnknownCaches({*Clutter().machine, {}, {}}).empty()); // no folder of caches
        for (const auto &[name, places] :
             {std::pair("unknown_places", 10), std::pair("fewer_unknown_places", 4)}) {
            const ClutterScene mac(u"cleanup/%1.txt"_qs.arg(QLatin1String(name)));
            std::vector<ScanProgress> heard;
            const auto hear = [&](const ScanProgress &now) { heard.push_back(now); };
            const auto entries = CacheCleaner::scanUnknownCaches(
                {*mac.machine, {.stop = {}, .progress = hear}, mac.excludes()});
            QCOMPARE(found(mac, entries), mac.expected);
            QCOMPARE(heard.size(), std::size_t(places));
            for (std::size_t index = 0; index < heard.size(); ++index)
                QVERIFY(heard[index].done == std::int64_t(index + 1) && heard[index].total == places &&
                        !heard[index].what.isEmpty());
        }
    }

    void whatIsMoreThanACacheIsNotOffered()
    {
        const ClutterScene mac(u"cleanup/more_than_caches.txt"_qs);
        CacheEntry pip{mac.homePath("Library/Caches/pip"), u"pip"_qs};
        mac.machine->cleanup.moreThanCaches = {"editor*", "Notes/*/unsaved*", "pip/mcp-*"};
        QCOMPARE(found(mac, CacheCleaner::scan({*mac.machine, {}, {}})) + u'\n' +
                     found(mac, CacheCleaner::scanUnknownCaches({*mac.machine, {}, {}})),
                 mac.expected);
        QCOMPARE(CacheCleaner::clean(*mac.machine, {pip}, {}), std::vector<bool>{false});
        QCOMPARE(mac.asked(), QString()); // it was offered before it became more
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
        QCOMPARE(found(mac, entries), u"~/.Trash|Trash — stuff you already deleted|3072000"_qs);
        QCOMPARE(CacheCleaner::clean(*mac.machine, entries, excludes), std::vector<bool>{true});
        QCOMPARE(mac.asked(), u"empty trash ~/.Trash in ~\nkeep ~/.Trash/keep"_qs);
        QVERIFY(CacheCleaner::scan({*mac.machine, {}, mac.excluding({""})}).empty());
    }

    void cleaning()
    {
        const ClutterScene mac(u"cleanup/cleaning.txt"_qs);
        std::vector<CacheEntry> entries = CacheCleaner::scan({*mac.machine, {}, {}});
        const auto trash = mac.homePath("Library/Caches/x/.Trash");
        entries.push_back({trash, u"x"_qs, 1, *FileIdentity::of(trash)});
        StopSource stop;
        stop.requestStop();
        QCOMPARE(CacheCleaner::clean(*mac.machine, entries, {}, stop.token()), std::vector<bool>(5));
        QVERIFY(mac.asked().isEmpty() && !mac.runs().contains(u"/usr/bin/env"_qs));
        mac.disposal().refused = {mac.homePath("Library/Caches/pip")};
        QCOMPARE(CacheCleaner::clean(*mac.machine, entries, mac.excludes()),
                 (std::vector<bool>{true, false, false, true, true}));
        QCOMPARE(mac.asked(), mac.expected);
        QVERIFY(mac.runs().endsWith(u"\n/usr/bin/env brew cleanup -q\n/usr/bin/env pip cache purge"_qs));
    }

    void packageManagers()
    {
        // What is chosen, what must stay, and whether they run only when chosen.
        compareTable(fixture(u"cleanup/package_managers.txt"_qs), [](const Cells &row) {
            const Clutter mac;
            mac.addTool(u"/usr/bin/env"_qs, ":");
            for (PackageCleanup &cleanup : mac.machine->cleanup.packageCleanups)
                cleanup.onlyWhenChosen = row[2] != "always";
            const auto caches = mac.homePath("Library/Caches");
            if (row[2] == "refused")
                mac.disposal().refused = {caches / row.string(0)};
            std::vector<CacheEntry> entries;
            if (!row[0].isEmpty())
                entries.push_back({caches / row.string(0), row.text(0)});
            const ExcludeList excludes =
                row[1].isEmpty() ? ExcludeList() : ExcludeList({caches / row.string(1)});
            CacheCleaner::clean(*mac.machine, entries, excludes);
            return mac.runs()
                .replace(u"/usr/bin/env brew cleanup -q"_qs, u"brew"_qs)
                .replace(u"/usr/bin/env pip cache purge"_qs, u"pip"_qs)
                .replace(u'\n', u' ');
        });
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
