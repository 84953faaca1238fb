#include "platform/linux/RemovalScene.h"
#include "platform/posix/HeldFolder.h"
#include "support/OwnMounts.h"
#include "support/Table.h"

#include <QtTest/QTest>

#include <atomic>
#include <fcntl.h>
#include <random>
#include <set>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

using namespace swabby;

namespace {

namespace fs = std::filesystem;

bool isUnder(const std::string &path, const std::string &folder)
{
    return path.starts_with(folder + '/');
}

/// Everything but the Trash and the log, and without the times of folders that lost or gained a child.
TreePicture relevant(TreePicture picture, const std::vector<std::string> &touched)
{
    const std::vector<std::string> own = {"machine/home/data", "machine/home/.Trash", "machine/events.jsonl"};
    for (auto entry = picture.begin(); entry != picture.end();) {
        const bool isOwn = std::any_of(own.begin(), own.end(), [&](const std::string &place) {
            return entry->first == place || isUnder(entry->first, place);
        });
        if (std::find(touched.begin(), touched.end(), entry->first) != touched.end())
            entry->second.clear();
        entry = isOwn ? picture.erase(entry) : std::next(entry);
    }
    return picture;
}

/// Removes random things from a random tree, and tries to remove what may not be.
std::string runOfRemovals(std::uint32_t seed, Kind kind, Way way)
{
    Scene scene(kind);
    growRandomTree(scene.tree(), scene.ground / "outside", seed);
    const TreePicture before = pictureOf(scene.ground.path());
    std::mt19937 random(seed);
    std::vector<std::string> touched = {"machine/home", "machine"};
    TreePicture expected = before;
    for (int round = 0; round < 5; ++round) {
        std::vector<std::string> candidates;
        for (const auto &[path, line] : expected)
            if (isUnder(path, "machine/home/tree") && path.size() < 2000)
                candidates.push_back(path);
        if (candidates.empty())
            break;
        const std::string chosen = candidates[random() % candidates.size()];
        const RemovalTarget target = targetAt(scene.ground / chosen, scene.tree());

        RemovalTarget wrong = target;
        ++wrong.identity.inode;
        RemovalTarget around = target;
        around.path = scene.tree() / "." / target.path.lexically_relative(scene.tree());
        const RemovalTarget itself = targetAt(scene.tree(), scene.tree());
        const RemovalTarget beyond = targetAt(scene.tree() / "../../../outside/folder", scene.tree());
        for (const RemovalTarget &refused : {wrong, around, itself, beyond})
            if (scene.remove(way, refused))
                return "not refused: " + refused.path.native();

        // What is in a folder that may not be written to stays when its owner has no special rights.
        const bool isEmptying = way == Way::emptyFolder;
        const fs::path changed = isEmptying ? target.path : target.path.parent_path();
        const bool goes =
            ::access(changed.c_str(), W_OK) == 0 && (!isEmptying || target.identity.kind == FileKind::folder);
        if (scene.remove(way, target) != goes && !isEmptying)
            return "not as expected: " + chosen;
        if (!goes)
            continue;
        touched.push_back(isEmptying ? chosen : fs::path(chosen).parent_path().native());
        std::erase_if(expected, [&](const auto &entry) {
            return isUnder(entry.first, chosen) || (!isEmptying && entry.first == chosen);
        });
    }
    const std::string problem =
        difference(relevant(expected, touched), relevant(pictureOf(scene.ground.path()), touched));
    if (!problem.empty() || way != Way::moveToTrash)
        return problem;
    for (auto item = scene.trashed.rbegin(); item != scene.trashed.rend(); ++item)
        if (!scene.disposal->putBack(*item))
            return "not put back: " + item->from.native();
    return difference(relevant(before, touched), relevant(pictureOf(scene.ground.path()), touched));
}

void exchange(const fs::path &one, const fs::path &other)
{
    ::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE);
}

/// Somebody swaps a folder for a link to the outside and back again for as long as this lasts.
class Swapper {
public:
    Swapper(fs::path folder, fs::path link, std::atomic<int> &swaps)
        : m_thread([this, &swaps, folder = std::move(folder), link = std::move(link)] {
              for (; !m_stop; ++swaps)
                  exchange(folder, link);
          })
    {
    }
    ~Swapper()
    {
        m_stop = true;
        m_thread.join();
    }

private:
    std::atomic<bool> m_stop = false;
    std::thread m_thread;
};

} // namespace

class LinuxRemovalTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everythingElseStaysAsItWas()
    {
        for (const Kind kind : everyKind)
            for (const bool isNobody : {false, true}) {
                const std::string problem = inChild([&] {
                    if (isNobody)
                        becomeNobody();
                    for (std::uint32_t seed = 1; seed <= 25; ++seed)
                        for (const Way way : everyWay)
                            if (const auto found = runOfRemovals(seed, kind, way); !found.empty())
                                return "seed " + std::to_string(seed) + ", way " +
                                       std::to_string(static_cast<int>(way)) + ": " + found;
                    return std::string();
                });
                QCOMPARE(QByteArray::fromStdString(problem), QByteArray());
            }
    }

    void theGuardRefuses()
    {
        Scene scene(Kind::thisComputer);
        for (const char *name : {"home/tree/file", "home2/file", "home/tree/inner/file"})
            writeBytes(scene.machine() / name, name);
        fs::create_directory_symlink(scene.ground / "outside", scene.home() / "out");
        fs::create_directory_symlink(scene.tree(), scene.home() / "within");
        const std::string machine = scene.machine().native();
        const TreePicture before = pictureOf(scene.ground.path());
        compareTable(fixture(u"linux/the_guard_refuses.txt"_qs), [&](const Cells &row) {
            const RemovalTarget target = targetAt(machine + row.string(1), machine + row.string(2));
            bool isTaken = target.identity.inode == 0 || emptyNow(*scene.disposal, target);
            for (const Way way : everyWay)
                isTaken = scene.remove(way, target) || isTaken;
            return isTaken ? u"taken"_qs : u"refused"_qs;
        });
        QCOMPARE(QByteArray::fromStdString(difference(before, pictureOf(scene.ground.path()))), QByteArray());
        // The folder that is allowed may be a link.
        const fs::path within = scene.home() / "within";
        QVERIFY(scene.remove(Way::deleteOutright, targetAt(within / "file", within)));
        QVERIFY(!fs::exists(scene.tree() / "file"));
    }

    void depthCostsNoDescriptors()
    {
        const std::string problem = inChild([]() -> std::string {
            Scene scene(Kind::thisComputer);
            fs::create_directory(scene.tree());
            Descriptor here = holdFolder(scene.tree());
            for (int depth = 0; depth < 5000; ++depth) {
                ::mkdirat(here.number(), "folder", 0755);
                here = holdFolder(here.number(), "folder", Links::refuse);
            }
            const rlimit few = {64, 64};
            ::setrlimit(RLIMIT_NOFILE, &few);
            return scene.remove(Way::deleteOutright, targetAt(scene.tree(), scene.home())) ? "" : "stayed";
        });
        QCOMPARE(QByteArray::fromStdString(problem), QByteArray());
    }

    void anotherMountStays()
    {
        const std::string problem = inOwnMounts([]() -> std::string {
            Scene scene(Kind::thisComputer);
            const fs::path disk = scene.tree() / "a/disk";
            const fs::path view = scene.tree() / "b/view";
            const auto isWrong = [&](Way way) -> std::string {
                writeBytes(scene.tree() / "a/gone", "x");
                const TreePicture before = pictureOf(disk);
                const TreePicture outside = pictureOf(scene.ground / "outside");
                const bool wentAll = scene.remove(way, targetAt(scene.tree(), scene.home()));
                if (wentAll || fs::exists(scene.tree() / "a/gone"))
                    return "what should have gone stayed, or the other way round";
                return difference(before, pictureOf(disk)) + difference(outside, pictureOf(view));
            };
            fs::create_directories(disk);
            fs::create_directories(view);
            // The second one is on the same device, only another view of it.
            if (::mount("none", disk.c_str(), "tmpfs", 0, nullptr) != 0 ||
                ::mount((scene.ground / "outside").c_str(), view.c_str(), nullptr, MS_BIND, nullptr) != 0)
                return "SKIP";
            writeBytes(disk / "kept/file", "kept");
            std::string problem = isWrong(Way::deleteOutright) + isWrong(Way::emptyFolder);
            // The mount point itself is nothing that can go either.
            if (scene.remove(Way::deleteOutright, targetAt(disk, scene.home())) ||
                scene.remove(Way::moveToTrash, targetAt(disk, scene.home())) || !fs::exists(disk / "kept"))
                problem += "the mount point was removed";
            ::umount(disk.c_str());
            ::umount(view.c_str());
            return problem;
        });
        if (problem == "SKIP")
            QSKIP("mounting is not permitted here");
        QCOMPARE(QByteArray::fromStdString(problem), QByteArray());
    }

    void whatMustStayStaysInAnEmptiedFolder()
    {
        Scene scene(Kind::machineFolder);
        for (const char *name : {"kept/inner", "gone/inner", "file"})
            writeBytes(scene.tree() / name, name);
        const auto mustStay = [&](const fs::path &path) { return path == scene.tree() / "kept"; };
        QVERIFY(!scene.disposal->emptyFolder(targetAt(scene.tree(), scene.home()), mustStay));
        QCOMPARE(pictureOf(scene.tree()).size(), std::size_t(2));
        fs::create_directory_symlink(scene.tree(), scene.home() / "link");
        QVERIFY(!scene.disposal->emptyFolder(targetAt(scene.home() / "link", scene.home()), {}));
        QCOMPARE(bytesOf(scene.tree() / "kept/inner"), std::string("kept/inner"));
    }

    void theTrashLosesWhatWasListed()
    {
        for (const Kind kind : everyKind) {
            Scene scene(kind);
            const auto throwAway = [&](const char *name) {
                writeBytes(scene.tree() / name, name);
                return scene.remove(Way::moveToTrash,
                                    targetAt(scene.tree() / fs::path(name).begin()->native(), scene.tree()));
            };
            for (const char *name : {"gone", "folder/file", "changed", "replaced", "restored"})
                QVERIFY(throwAway(name));
            const bool isLinux = kind == Kind::thisComputer;
            const fs::path trash = scene.home() / (isLinux ? "data/Trash" : ".Trash");
            const fs::path items = isLinux ? trash / "files" : trash;
            const TrashListing listed = scene.disposal->listTrash(trash, {});
            QCOMPARE(listed.items.size(), 5U);
            // While the question waits.
            QVERIFY(throwAway("new") && scene.disposal->putBack(scene.trashed[4]));
            writeBytes(items / "folder/new", "x");
            writeBytes(items / "changed", "other");
            fs::remove(items / "replaced");
            writeBytes(items / "replaced", "replaced");
            QVERIFY(!scene.disposal->emptyTrash(targetAt(trash, scene.home()), listed, {}));
            std::set<std::string> left;
            for (const auto &entry : fs::directory_iterator(items))
                left.insert(entry.path().filename());
            QCOMPARE(left, (std::set<std::string>{"changed", "folder", "new", "replaced"}));
            QVERIFY(!isLinux || fs::exists(trash / "info/new.trashinfo"));
            QVERIFY(emptyNow(*scene.disposal, targetAt(trash, scene.home())));
            QVERIFY(fs::is_empty(items) && fs::exists(scene.tree() / "restored"));
        }
    }

    void aFolderThatChangedStays()
    {
        for (const Kind kind : everyKind) {
            Scene scene(kind);
            const fs::path folder = scene.tree() / "folder";
            writeBytes(folder / "inner/file", "x");
            const RemovalTarget before = targetAt(folder, scene.tree());
            writeBytes(folder / "inner/new", "x"); // no change of the folder itself
            writeBytes(folder / "new", "x");
            QVERIFY(!scene.remove(Way::moveToTrash, before));
            // Made again, perhaps with the same inode, and given its old times.
            RemovalTarget again = targetAt(folder, scene.tree());
            --again.identity.bornNanoseconds;
            QVERIFY(!scene.remove(Way::moveToTrash, again));
            QVERIFY(scene.remove(Way::moveToTrash, targetAt(folder, scene.tree())));
        }
    }

    void aFolderSwappedForALinkLeadsNowhere()
    {
        for (const Way way : everyWay) {
            // In memory there are far more swaps in the time that a removal takes.
            Scene scene(Kind::thisComputer,
                        fs::is_directory("/dev/shm") ? "/dev/shm" : fs::temp_directory_path());
            // What lies outside has the same names, so that every step would find something there.
            const auto names = [](const std::string &prefix) {
                std::vector<std::string> result = {prefix + "two/three"};
                for (int number = 0; number < 20; ++number)
                    result.push_back(prefix + "one" + std::to_string(number));
                return result;
            };
            const fs::path outside = scene.ground / "outside/mirror";
            for (const char *prefix : {"", "swapped/", "doomed/swapped/"})
                for (const std::string &name : names(prefix))
                    writeBytes(outside / name, name);
            const TreePicture before = pictureOf(scene.ground / "outside");

            int refused = 0;
            for (int race = 0; race < 2000; ++race) {
                const fs::path folder = scene.home() / std::to_string(race);
                for (const std::string &name : names("doomed/swapped/"))
                    writeBytes(folder / name, name);
                const RemovalTarget target = targetAt(folder / "doomed", scene.home());
                // In the doomed tree, the doomed folder itself, and on the way to it.
                const fs::path swapped[] = {folder / "doomed/swapped", folder / "doomed", folder};
                const fs::path link = scene.home() / ("link" + std::to_string(race));
                fs::create_symlink(outside, link);
                std::atomic<int> swaps = 0;
                const Swapper swapper(swapped[race % 3], link, swaps);
                while (swaps < 2)
                    std::this_thread::yield();
                refused += scene.remove(way, target) ? 0 : 1;
            }
            QCOMPARE(QByteArray::fromStdString(difference(before, pictureOf(scene.ground / "outside"))),
                     QByteArray());
            qInfo("%d of 2000 refused or left something", refused);
            QVERIFY(refused > 0);
        }
    }
};

QTEST_GUILESS_MAIN(LinuxRemovalTest)
#include "LinuxRemovalTest.moc"
