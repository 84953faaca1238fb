#include "support/RandomTree.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <QtTest/QTest>

using namespace swabby;

namespace fs = std::filesystem;

class FolderDisposalTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyEffectHasItsLine()
    {
        const TemporaryMachine folder;
        const auto machine = folder.open();
        Disposal &disposal = *machine->disposal;
        const fs::path home = folder.home().toStdString();
        for (const char *name : {"a/film.mov", "b/film.mov", "c/film.mov", "cache/one/deep", "cache/two"})
            writeBytes(home / name, name);
        std::vector<TrashedItem> items;
        for (const char *name : {"a", "b", "c"}) {
            const auto item = disposal.moveToTrash(targetAt(home / name / "film.mov", home));
            QVERIFY(item);
            items.push_back(*item);
        }
        QCOMPARE(bytesOf(home / ".Trash/film.mov"), std::string("a/film.mov"));
        QCOMPARE(bytesOf(home / ".Trash/film 2.mov"), std::string("b/film.mov"));
        QCOMPARE(bytesOf(home / ".Trash/film 3.mov"), std::string("c/film.mov"));

        fs::remove(home / "b");
        QVERIFY(disposal.putBack(items[1]));
        QVERIFY(!disposal.putBack(items[1]));
        QCOMPARE(bytesOf(home / "b/film.mov"), std::string("b/film.mov"));
        writeBytes(home / "a/film.mov", "another");
        QVERIFY(!disposal.putBack(items[0]));

        QVERIFY(disposal.emptyFolder(targetAt(home / "cache", home), {}));
        QVERIFY(emptyNow(disposal, targetAt(home / ".Trash", home)));
        QVERIFY(disposal.deleteOutright(targetAt(home / "b", home)));
        QVERIFY(!disposal.deleteOutright(targetAt(home / "b", home)));
        // Emptying has no order of its own.
        QStringList events =
            QString::fromStdString(bytesOf((folder.folder() + u"/events.jsonl"_qs).toStdString()))
                .remove(folder.home() + u'/')
                .trimmed()
                .split(u'\n');
        events.sort();
        QCOMPARE(events.join(u'\n'),
                 QString::fromUtf8(fixture(u"machinefolder/disposal.expected"_qs)).trimmed());
    }

    void whatTheTrashRefusesStays()
    {
        TemporaryMachine folder;
        const QString refusedPath = folder.home() + u"/Protected.app/"_qs;
        folder.writeFile(u"machine.json"_qs, "{\"trashRefuses\": [\"" + refusedPath.toUtf8() + "\", 7]}");
        const auto machine = folder.open();
        const fs::path home = folder.home().toStdString();
        writeBytes(home / "Protected.app/Contents/file", "x");
        writeBytes(home / "Protected.app2", "x");
        fs::create_directory_symlink(home, home / "same");
        for (const fs::path &path : {home / "Protected.app", home / "Protected.app/Contents/file"})
            QVERIFY(!machine->disposal->moveToTrash(targetAt(path, home)));
        QVERIFY(!machine->disposal->moveToTrash(targetAt(home / "same/Protected.app", home / "same")));
        QVERIFY(machine->disposal->moveToTrash(targetAt(home / "Protected.app2", home)));
        QCOMPARE(folder.events(u"trash"_qs).size(), 1);
    }

    void nothingLeavesTheFolder()
    {
        const TemporaryMachine folder;
        const auto machine = folder.open();
        Disposal &disposal = *machine->disposal;
        const fs::path home = folder.home().toStdString();
        const Ground outside;
        growOutside(outside / "kept");
        writeBytes(home / "file", "x");
        fs::create_directory_symlink(outside.path(), home / "Downloads");
        const auto item = disposal.moveToTrash(targetAt(home / "file", home));
        QVERIFY(item);
        const TreePicture before = pictureOf(outside.path());
        const TreePicture inside = pictureOf(home);
        const auto everyWay = [&](const fs::path &path, const fs::path &allowed) {
            const RemovalTarget target = targetAt(path, allowed);
            return disposal.moveToTrash(target) || disposal.deleteOutright(target) ||
                   disposal.emptyFolder(target, {}) || emptyNow(disposal, target);
        };
        QVERIFY(!everyWay(outside / "kept", outside.path()));
        QVERIFY(!everyWay(home / "Downloads/kept", home / "Downloads"));
        QVERIFY(!everyWay(home / "Downloads/kept", home));
        for (const fs::path &from : {outside / "new/file", home / "Downloads/new/file",
                                     home / "../../new/file", home / "Downloads/file"}) {
            TrashedItem elsewhere = *item;
            elsewhere.from = from;
            QVERIFY(!disposal.putBack(elsewhere));
        }
        QVERIFY(difference(before, pictureOf(outside.path())).empty());
        QVERIFY(difference(inside, pictureOf(home)).empty());

        // A Trash that leads away takes nothing.
        fs::remove_all(home / ".Trash");
        fs::create_directory_symlink(outside.path(), home / ".Trash");
        writeBytes(home / "file", "x");
        QVERIFY(!disposal.moveToTrash(targetAt(home / "file", home)));
        QVERIFY(!emptyNow(disposal, targetAt(home / ".Trash", home)));
        QVERIFY(difference(before, pictureOf(outside.path())).empty());
        QCOMPARE(bytesOf(home / "file"), std::string("x"));
    }
};

QTEST_GUILESS_MAIN(FolderDisposalTest)
#include "FolderDisposalTest.moc"
