#include "cleanup/PutBackRecord.h"
#include "support/RandomTree.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QFile>
#include <QtTest/QTest>

#include <functional>
#include <limits>
#include <set>
#include <sys/stat.h>

using namespace swabby;

namespace fs = std::filesystem;

class PutBackRecordTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyByteAndFigureSurvives()
    {
        const Ground ground;
        const QString folder = QString::fromStdString((ground / "a/b").native());
        PutBackRecord record(folder);
        QVERIFY(record.load().empty());
        constexpr auto largest = std::numeric_limits<std::uint64_t>::max();
        std::vector<TrashedItem> items;
        for (const char *name : {"plain", "two\nlines", "caf\xE9", "h\xC3\xA9", "\"quoted\\"})
            items.push_back(
                {fs::path("/home") / name,
                 fs::path("/trash") / name,
                 {largest, largest - 1, FileKind::link, std::numeric_limits<std::int64_t>::max(), -1}});
        for (const TrashedItem &item : items)
            QVERIFY(record.add(item));
        const auto loaded = PutBackRecord(folder).load();
        QCOMPARE(loaded, items);
        for (const TrashedItem &item : loaded)
            QVERIFY(item.identity.isSameThing(items[0].identity));
        const QString file = folder + QStringLiteral("/put-back.json");
        QCOMPARE(QFile::permissions(file) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    }

    void whatIsNoRecordKeepsNobody()
    {
        const Ground ground;
        const QString folder = QString::fromStdString(ground.path().native());
        const fs::path file = ground / "put-back.json";
        const TrashedItem item = {"/a", "/nowhere/b", {}};
        writeBytes(ground / "outside", "");
        const std::pair<const char *, std::function<void()>> states[] = {
            {"empty", [&] { writeBytes(file, ""); }},
            {"no JSON", [&] { writeBytes(file, "[\n{}"); }},
            {"no paths",
             [&] { writeBytes(file, "[7, {}, {\"from\": \"a\", \"trashed\": \"/b\", \"kind\": 0}]"); }},
            {"a pipe", [&] { ::mkfifo(file.c_str(), 0600); }},
            {"a device", [&] { fs::create_symlink("/dev/zero", file); }},
            {"a link", [&] { fs::create_symlink(ground / "outside", file); }},
            {"larger than anything", [&] { writeBytes(file, ""), fs::resize_file(file, 1LL << 40); }},
        };
        for (const auto &[name, make] : states) {
            make();
            QVERIFY2(PutBackRecord(folder).load().empty(), name);
            PutBackRecord record(folder);
            record.begin();
            QVERIFY2(record.add(item) && record.load() == std::vector{item}, name);
            fs::remove(file);
        }
        QCOMPARE(bytesOf(ground / "outside"), std::string());
        // A line that a full disk has torn spoils no other.
        writeBytes(file, "{\"from\": \"/torn");
        QVERIFY(PutBackRecord(folder).add(item));
        QCOMPARE(PutBackRecord(folder).load(), std::vector{item});
    }

    void onlyTheLatestRemovalsCount()
    {
        const TemporaryMachine folder;
        const auto machine = folder.open();
        const fs::path home = folder.home().toStdString();
        const auto move = [&](PutBackRecord &record, const char *name) {
            writeBytes(home / name, name);
            machine->disposal->moveToTrash(targetAt(home / name, home),
                                           [&](const TrashedItem &item) { return record.add(item); });
        };
        const QString data = machine->places.applicationData;
        {
            PutBackRecord first(data);
            first.begin();
            move(first, "one");
            // Written down, and killed before it moved; another name was tried, and taken meanwhile.
            writeBytes(home / "stays", "x");
            for (const char *name : {".Trash/stays", ".Trash/one"})
                QVERIFY(first.add({home / "stays", home / name, targetAt(home / "stays", home).identity}));
            PutBackRecord second(data);
            second.begin();
            move(second, "two");
            QCOMPARE(first.load().size(), 2U);
        }
        fs::remove(home / ".Trash/two"); // by somebody else
        QCOMPARE(PutBackRecord(data).load().size(), 1U);
        PutBackRecord third(data);
        third.begin();
        QVERIFY(third.isEmpty());
        move(third, "three");
        QCOMPARE(third.putBackAll(*machine->disposal), (PutBackResult{1, 0}));
        QVERIFY(third.isEmpty() && fs::exists(home / "three") && !fs::exists(home / "one"));
    }

    void removalsAndPutBacksAtOnceLoseNothing()
    {
        constexpr int files = 300;
        const TemporaryMachine folder;
        const auto machine = folder.open();
        const fs::path home = folder.home().toStdString();
        const QString data = machine->places.applicationData;
        const std::string problem = inChildren(4, [&](int number) -> std::string {
            const auto own = folder.open();
            if (number > 1) {
                for (int round = 0; round < files; ++round)
                    PutBackRecord(data).putBackAll(*own->disposal);
                return {};
            }
            for (int file = 0; file < files; ++file) {
                PutBackRecord record(data);
                record.begin();
                for (const char *name : {"a", "b"}) {
                    const fs::path path = home / std::to_string(number) / (name + std::to_string(file));
                    writeBytes(path, path.native());
                    if (!own->disposal->moveToTrash(targetAt(path, home),
                                                    [&](const auto &item) { return record.add(item); }))
                        return "not moved: " + path.native();
                }
            }
            return {};
        });
        QCOMPARE(QByteArray::fromStdString(problem), QByteArray());
        std::set<std::string> contents;
        for (const fs::path &place : {home / "0", home / "1", home / ".Trash"})
            for (const auto &file : fs::directory_iterator(place))
                contents.insert(bytesOf(file));
        QCOMPARE(contents.size(), std::size_t(files * 4));
        // What of the last removal is not back is on record.
        for (const TrashedItem &item : PutBackRecord(data).load())
            QCOMPARE(bytesOf(item.trashed), item.from.native());
    }

    void whatStaysInTheTrashIsRemembered()
    {
        const TemporaryMachine folder;
        const auto machine = folder.open();
        const fs::path home = folder.home().toStdString();
        PutBackRecord record(machine->places.applicationData);
        QCOMPARE(record.putBackAll(*machine->disposal), PutBackResult());

        // The file goes before the folder it was in, so it has to come back after it.
        std::vector<TrashedItem> items;
        for (const char *name : {"one", "project/file", "project", "two"})
            writeBytes(home / name / (fs::path(name) == "project" ? "other" : "inner"), name);
        for (const char *name : {"one", "project/file", "project", "two"})
            items.push_back(machine->disposal
                                ->moveToTrash(targetAt(home / name, home),
                                              [&](const TrashedItem &item) { return record.add(item); })
                                .value());
        writeBytes(home / "one", "in the way");
        QCOMPARE(record.putBackAll(*machine->disposal), (PutBackResult{3, 1}));
        QCOMPARE(bytesOf(home / "project/file/inner"), std::string("project/file"));
        QCOMPARE(bytesOf(home / "project/other"), std::string("project"));
        QCOMPARE(record.load(), std::vector{items[0]});
        fs::remove(home / "one");
        QCOMPARE(record.putBackAll(*machine->disposal), (PutBackResult{1, 0}));
        QVERIFY(record.load().empty());
    }
};

QTEST_GUILESS_MAIN(PutBackRecordTest)
#include "PutBackRecordTest.moc"
