#include "cleanup/PutBackRecord.h"
#include "support/RandomTree.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QFile>
#include <QtTest/QTest>

#include <limits>

using namespace swabby;

namespace fs = std::filesystem;

class PutBackRecordTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyByteAndFigureSurvives()
    {
        const Ground ground;
        const QString folder = QString::fromStdString((ground / "a/b").native());
        const PutBackRecord record(folder);
        QVERIFY(record.load().empty());
        constexpr auto largest = std::numeric_limits<std::uint64_t>::max();
        std::vector<TrashedItem> items;
        for (const char *name : {"plain", "two\nlines", "caf\xE9", "h\xC3\xA9", "\"quoted\\"})
            items.push_back(
                {fs::path("/home") / name,
                 fs::path("/trash") / name,
                 {largest, largest - 1, FileKind::link, std::numeric_limits<std::int64_t>::max(), -1}});
        QVERIFY(record.store(items));
        const auto loaded = PutBackRecord(folder).load();
        QCOMPARE(loaded, items);
        for (const TrashedItem &item : loaded)
            QVERIFY(item.identity.isSameThing(items[0].identity));
        const QString file = folder + QStringLiteral("/put-back.json");
        QCOMPARE(QFile::permissions(file) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());

        items.resize(1);
        QVERIFY(record.store(items));
        QCOMPARE(record.load(), items);
        for (const char *broken :
             {"", "[", "{}", "[7, {}, {\"from\": \"a\", \"trashed\": \"/b\", \"kind\": 0}]"}) {
            writeBytes(file.toStdString(), broken);
            QVERIFY(record.load().empty());
        }
        record.forget();
        QVERIFY(!QFile::exists(file));
    }

    void whatStaysInTheTrashIsRemembered()
    {
        const TemporaryMachine folder;
        const auto machine = folder.open();
        const fs::path home = folder.home().toStdString();
        const PutBackRecord record(machine->places.applicationData);
        QCOMPARE(record.putBackAll(*machine->disposal), PutBackResult());

        // The file goes before the folder it was in, so it has to come back after it.
        std::vector<TrashedItem> items;
        for (const char *name : {"one", "project/file", "project", "two"})
            writeBytes(home / name / (fs::path(name) == "project" ? "other" : "inner"), name);
        for (const char *name : {"one", "project/file", "project", "two"})
            items.push_back(machine->disposal->moveToTrash(targetAt(home / name, home)).value());
        QVERIFY(record.store(items));
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
