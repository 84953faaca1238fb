#include "platform/linux/RemovalScene.h"
#include "platform/linux/TrashRecord.h"
#include "support/OwnMounts.h"

#include <QtTest/QTest>

#include <set>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace swabby;

namespace {

struct TrashScene : Scene {
    TrashScene() : Scene(Kind::thisComputer) {}

    fs::path trash() const { return home() / "data/Trash"; }
    std::optional<TrashedItem> move(const fs::path &path) { return move(path, home()); }
    std::optional<TrashedItem> move(const fs::path &path, const fs::path &allowed)
    {
        return disposal->moveToTrash(targetAt(path, allowed));
    }
    bool empty(const MustStay &mustStay = {})
    {
        return emptyNow(*disposal, targetAt(trash(), home()), mustStay);
    }
};

std::size_t countIn(const fs::path &folder)
{
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
}

fs::path recordOf(const TrashedItem &item)
{
    return item.trashed.parent_path().parent_path() / "info" /
           (item.trashed.filename().native() + std::string(trashRecordEnding));
}

QByteArray shown(const std::string &text)
{
    return QByteArray::fromStdString(text);
}

} // namespace

class LinuxTrashTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { qputenv("TZ", "Asia/Kolkata"); }

    void recordsSurviveEveryByte()
    {
        QCOMPARE(shown(trashRecordText("/h\xC3\xA9/a b%c\n\xFF~(x)", 1'700'000'000.9)),
                 QByteArray(
                     "[Trash Info]\nPath=/h%C3%A9/a%20b%25c%0A%FF~(x)\nDeletionDate=2023-11-15T03:43:20\n"));
        std::string all = "/";
        for (int byte = 1; byte < 256; ++byte)
            all += static_cast<char>(byte);
        QCOMPARE(pathOfTrashRecord(trashRecordText(all, 0)), std::optional(all));
        const std::string head = "[Trash Info]\n";
        QCOMPARE(pathOfTrashRecord(head + "DeletionDate=x\nPath=/a%2fb"), std::optional<std::string>("/a/b"));
        for (const char *bad : {"Path=/a%", "Path=/a%4", "Path=/a%zz", "Path=/a%00b", "path=/a", ""})
            QCOMPARE(pathOfTrashRecord(head + bad), std::nullopt);
        QCOMPARE(pathOfTrashRecord("[Other]\nPath=/a"), std::nullopt);
    }

    void everyNameGoesAndComesBack()
    {
        TrashScene scene;
        const std::string longest(255, 'n');
        std::string accents;
        while (accents.size() < 250)
            accents += "\xC3\xA9";
        const std::vector<std::string> names = {"plain.txt", "two\nlines", "caf\xE9",
                                                ".hidden",   longest,      longest.substr(4) + ".txt",
                                                accents,     "%41"};
        std::vector<TrashedItem> items;
        writeBytes(scene.trash() / "files/.hidden", "without a record");
        // Twice each, so that every name is also one that is taken.
        for (const char *folder : {"one", "two"})
            for (const std::string &name : names) {
                writeBytes(scene.home() / folder / name, folder + name);
                const auto item = scene.move(scene.home() / folder / name);
                QVERIFY(item);
                QVERIFY(!fs::exists(item->from));
                QCOMPARE(bytesOf(item->trashed), folder + name);
                QCOMPARE(pathOfTrashRecord(bytesOf(recordOf(*item))), std::optional(item->from.native()));
                items.push_back(*item);
            }
        struct stat facts = {};
        ::stat(recordOf(items[0]).c_str(), &facts);
        QCOMPARE(facts.st_mode & 07777, mode_t(0600));
        QCOMPARE(items[0].trashed, scene.trash() / "files/plain.txt");
        QCOMPARE(items[8].trashed, scene.trash() / "files/plain 2.txt");
        QCOMPARE(items[3].trashed, scene.trash() / "files/.hidden 2");
        QVERIFY(items[5].trashed.native().ends_with(".txt"));
        // Not cut inside a character, or no file browser could show it.
        QCOMPARE(items[6].trashed.filename().native().size(), std::size_t(244));

        fs::remove_all(scene.home() / "one");
        for (const TrashedItem &item : items)
            QVERIFY(scene.disposal->putBack(item));
        for (const TrashedItem &item : items)
            QVERIFY(bytesOf(item.from).ends_with(item.from.filename().native()));
        QCOMPARE(bytesOf(scene.trash() / "files/.hidden"), std::string("without a record"));
        QCOMPARE(countIn(scene.trash() / "files") + countIn(scene.trash() / "info"), std::size_t(1));
    }

    void putBackHarmsNothing()
    {
        TrashScene scene;
        const fs::path file = scene.home() / "a/b/file";
        writeBytes(file, "first");
        const auto item = scene.move(file);
        QVERIFY(item);
        writeBytes(file, "second");
        QVERIFY(!scene.disposal->putBack(*item));
        QCOMPARE(bytesOf(file), std::string("second"));
        QCOMPARE(bytesOf(item->trashed), std::string("first"));

        // A file where a folder was, and nothing made on the way there.
        fs::remove_all(scene.home() / "a");
        writeBytes(scene.home() / "a", "a file");
        QVERIFY(!scene.disposal->putBack(*item));
        QCOMPARE(bytesOf(scene.home() / "a"), std::string("a file"));

        fs::remove(scene.home() / "a");
        TrashedItem another = *item;
        ++another.identity.inode;
        QVERIFY(!scene.disposal->putBack(another));
        QVERIFY(!fs::exists(scene.home() / "a"));
        // Disks may be numbered anew by a restart.
        TrashedItem restarted = *item;
        ++restarted.identity.device;
        QVERIFY(scene.disposal->putBack(restarted));
        QCOMPARE(bytesOf(file), std::string("first"));
        QVERIFY(!fs::exists(recordOf(*item)));
    }

    void theTrashDoesNotSwallowItself()
    {
        TrashScene scene;
        writeBytes(scene.home() / "file", "x");
        const auto item = scene.move(scene.home() / "file");
        QVERIFY(item);
        const TreePicture before = pictureOf(scene.home());
        for (const fs::path &path :
             {scene.trash(), scene.trash() / "files", item->trashed, recordOf(*item), scene.home() / "data"})
            QVERIFY2(!scene.move(path), path.c_str());
        QVERIFY(!scene.move(scene.home(), scene.ground.path()));
        QCOMPARE(shown(difference(before, pictureOf(scene.home()))), QByteArray());
    }

    void noTrashNoMove()
    {
        for (const std::string state : {"", "files", "info", "a file", "another's"}) {
            TrashScene scene;
            const fs::path elsewhere = scene.ground / "elsewhere";
            fs::create_directory(elsewhere);
            writeBytes(scene.home() / "file", "x");
            if (state == "a file") {
                writeBytes(scene.trash(), state);
            } else if (state == "another's") {
                fs::create_directories(scene.trash());
                if (::chown(scene.trash().c_str(), 65534, 65534) != 0)
                    continue; // only the superuser may
            } else {
                const fs::path link = state.empty() ? scene.trash() : scene.trash() / state;
                fs::create_directories(link.parent_path());
                fs::create_directory_symlink(elsewhere, link);
            }
            QVERIFY2(!scene.move(scene.home() / "file"), state.c_str());
            QCOMPARE(bytesOf(scene.home() / "file"), std::string("x"));
            QVERIFY(fs::is_empty(elsewhere));
        }
    }

    void readOnlyFoldersMoveWithTheirRights()
    {
        const std::string problem = inChild([]() -> std::string {
            becomeNobody();
            TrashScene scene;
            const fs::path folder = scene.home() / "locked";
            writeBytes(folder / "file", "x");
            ::chmod(folder.c_str(), 0500);
            const TreePicture before = pictureOf(scene.home());
            const auto item = scene.move(folder);
            if (!item || !scene.disposal->putBack(*item))
                return "not moved there and back";
            // From a folder that may not be written nothing goes, and no record is left behind.
            if (scene.move(folder / "file") || !fs::is_empty(scene.trash() / "info"))
                return "moved out of a locked folder";
            fs::remove_all(scene.home() / "data");
            return difference(before, pictureOf(scene.home()));
        });
        QCOMPARE(shown(problem), QByteArray());
    }

    void eightProgramsLoseNothing()
    {
        constexpr int programs = 8;
        constexpr int files = 100;
        TrashScene scene;
        const auto pathOf = [&](int program, int number) {
            return scene.home() / std::to_string(program) / std::to_string(number) / "report.txt";
        };
        const std::string problem = inChildren(programs, [&](int program) -> std::string {
            for (int number = 0; number < files; ++number)
                writeBytes(pathOf(program, number), pathOf(program, number).native());
            for (int number = 0; number < files; ++number)
                if (!scene.move(pathOf(program, number)))
                    return "not moved";
            return {};
        });
        QCOMPARE(shown(problem), QByteArray());
        std::set<std::string> contents;
        for (const auto &file : fs::directory_iterator(scene.trash() / "files")) {
            const TrashedItem item = {{}, file.path(), {}};
            QCOMPARE(pathOfTrashRecord(bytesOf(recordOf(item))), std::optional(bytesOf(file)));
            contents.insert(bytesOf(file));
        }
        QCOMPARE(contents.size(), std::size_t(programs * files));
        QCOMPARE(countIn(scene.trash() / "info"), std::size_t(programs * files));
    }

    void emptyingTakesTheRecordsToo()
    {
        TrashScene scene;
        for (const char *name : {"precious/file", "b/inner/file", "c"}) {
            writeBytes(scene.home() / name, name);
            QVERIFY(scene.move(scene.home() / fs::path(name).begin()->native()));
        }
        writeBytes(scene.trash() / "info/stray.trashinfo", "[Trash Info]\n");
        writeBytes(scene.trash() / "expunged/1234/file", "x");
        writeBytes(scene.trash() / "directorysizes", "x");
        // What has to stay is told by where it was.
        const auto mustStay = [&](const fs::path &path) { return path == scene.home() / "precious"; };
        QVERIFY(!scene.empty(mustStay));
        QCOMPARE(bytesOf(scene.trash() / "files/precious/file"), std::string("precious/file"));
        QCOMPARE(countIn(scene.trash() / "files"), std::size_t(1));
        QCOMPARE(countIn(scene.trash() / "info"), std::size_t(1));
        QVERIFY(scene.empty());
        QCOMPARE(countIn(scene.trash()), std::size_t(3));
        for (const char *folder : {"files", "info", "expunged"})
            QVERIFY(fs::is_empty(scene.trash() / folder));

        // A link in place of the Trash, and one in place of its files.
        writeBytes(scene.ground / "other/files/file", "x");
        fs::create_directory(scene.ground / "other/info");
        fs::remove(scene.trash() / "files");
        fs::create_directory_symlink(scene.ground / "other/files", scene.trash() / "files");
        QVERIFY(!scene.empty());
        fs::remove_all(scene.trash());
        fs::create_directory_symlink(scene.ground / "other", scene.trash());
        QVERIFY(!scene.empty());
        QCOMPARE(bytesOf(scene.ground / "other/files/file"), std::string("x"));
    }

    void otherDisksHaveTheirOwn()
    {
        const std::string problem = inOwnMounts([]() -> std::string {
            TrashScene scene;
            const fs::path disk = scene.home() / "disk";
            fs::create_directory(disk);
            if (::mount("none", disk.c_str(), "tmpfs", 0, nullptr) != 0)
                return "SKIP";
            const std::string user = std::to_string(::geteuid());
            const fs::path own = disk / (".Trash-" + user);
            const fs::path shared = disk / ".Trash";
            std::string problems;
            const auto isWrong = [&](const char *what, const fs::path &trash) {
                writeBytes(disk / "a/b c", "content");
                const auto item = scene.move(disk / "a/b c");
                const bool isRight = trash.empty()
                                         ? !item && bytesOf(disk / "a/b c") == "content"
                                         : item && item->trashed == trash / "files/b c" &&
                                               bytesOf(item->trashed) == "content" &&
                                               pathOfTrashRecord(bytesOf(recordOf(*item))) == "a/b c" &&
                                               scene.disposal->putBack(*item) &&
                                               bytesOf(disk / "a/b c") == "content";
                if (!isRight)
                    problems += std::string(what) + "; ";
            };
            isWrong("made", own);
            fs::create_directory(shared);
            isWrong("not sticky", own);
            ::chmod(shared.c_str(), 01777);
            isWrong("shared", shared / user);
            const auto mustStay = [&](const fs::path &path) { return path == disk / "a/b c"; };
            const auto item = scene.move(disk / "a/b c");
            const RemovalTarget trash = targetAt(shared / user, scene.home());
            if (!item || emptyNow(*scene.disposal, trash, mustStay) || !fs::exists(item->trashed) ||
                !emptyNow(*scene.disposal, trash) || fs::exists(item->trashed))
                problems += "emptied; ";
            ::chown((shared / user).c_str(), 1, 1);
            isWrong("shared, another's", own);
            fs::remove_all(shared);
            fs::create_directory(disk / "target");
            ::chmod((disk / "target").c_str(), 01777);
            fs::create_directory_symlink(disk / "target", shared);
            isWrong("shared, a link", own);
            ::chown(own.c_str(), 1, 1);
            isWrong("another's", {});
            fs::remove_all(own);
            fs::create_directory_symlink(disk / "target", own);
            isWrong("a link", {});
            if (!fs::is_empty(disk / "target"))
                problems += "something behind the link; ";
            ::umount(disk.c_str());
            return problems;
        });
        if (problem == "SKIP")
            QSKIP("mounting is not permitted here");
        QCOMPARE(shown(problem), QByteArray());
    }
};

QTEST_GUILESS_MAIN(LinuxTrashTest)
#include "LinuxTrashTest.moc"
