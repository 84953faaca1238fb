#include "cleanup/DuplicateFolders.h"

#include <QtTest/QTest>

#include <sys/stat.h>

using namespace swabby;

namespace {

/// A Trash that is a folder, and refuses what is called so.
class FolderTrash final : public Disposal {
public:
    explicit FolderTrash(Path folder) : m_folder(std::move(folder)) {}

    std::optional<TrashedItem> moveToTrash(const RemovalTarget &target) override
    {
        const Path place = m_folder / std::to_string(m_count++);
        if (target.path.filename() == "refused" || target.path.parent_path() != target.allowedFolder)
            return std::nullopt;
        std::filesystem::rename(target.path, place);
        afterEach();
        return TrashedItem{target.path, place, target.identity};
    }
    bool putBack(const TrashedItem &) override { return false; }
    bool deleteOutright(const RemovalTarget &) override { return false; }
    bool emptyFolder(const RemovalTarget &, const MustStay &) override { return false; }
    bool emptyTrash(const RemovalTarget &, const MustStay &) override { return false; }

    std::function<void()> afterEach = [] {};

private:
    Path m_folder;
    int m_count = 0;
};

constexpr std::size_t size = 300'000;

/// Writes other bytes into the same file and sets its time back.
void rewriteSecretly(const Path &path)
{
    const auto time = std::filesystem::last_write_time(path);
    std::FILE *file = std::fopen(path.c_str(), "r+b");
    std::fputc('x', file);
    std::fputc('y', file);
    std::fclose(file);
    std::filesystem::last_write_time(path, time);
}

using Meanwhile = std::function<void(const DuplicateFolders &, std::vector<DuplicateGroup> &)>;

} // namespace

class DuplicateRemovalTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// The kept copy, and three others: which of them go depends on what happened after the search.
    void whatGoes()
    {
        const auto row = [](const char *name, const Meanwhile &meanwhile, const std::set<Path> &gone = {}) {
            const DuplicateFolders folders;
            for (const char *name : {"Downloads/kept", "Desktop/a", "Desktop/b\nb", "Desktop/refused not"})
                folders.write(name, contentOf(size));
            std::filesystem::create_directory(folders.top() / "Trash");
            FolderTrash trash(folders.top() / "Trash");
            auto groups = folders.scan();
            meanwhile(folders, groups);

            const auto removal = DuplicateFinder::removeDuplicates(groups, folders.both(), trash);
            std::set<Path> trashed;
            for (const TrashedItem &item : removal.trashed)
                trashed.insert(item.from.filename());
            QVERIFY2(trashed == gone, name);
            const std::size_t copies = groups.front().paths.empty() ? 0 : groups.front().paths.size() - 1;
            QCOMPARE(removal.stayed, static_cast<std::int64_t>(copies - gone.size()));
            for (const char *name : {"a", "b\nb", "refused not"})
                if (gone.count(name) > 0)
                    QVERIFY(!std::filesystem::exists(folders.desktop() / name));
        };
        const auto onKept = [](void (*change)(const Path &)) -> Meanwhile {
            return [=](const DuplicateFolders &folders, auto &) { change(folders.downloads() / "kept"); };
        };
        const auto onA = [](void (*change)(const Path &)) -> Meanwhile {
            return [=](const DuplicateFolders &folders, auto &) { change(folders.desktop() / "a"); };
        };
        row("nothing happened", [](auto &, auto &) {}, {"a", "b\nb", "refused not"});
        row("one was refused",
            [](const DuplicateFolders &folders, std::vector<DuplicateGroup> &groups) {
                std::filesystem::rename(folders.desktop() / "a", folders.desktop() / "refused");
                groups = folders.scan();
            },
            {"b\nb", "refused not"});
        row("one was rewritten and given its old time", onA(rewriteSecretly), {"b\nb", "refused not"});
        row("one grew", onA([](const Path &path) { std::filesystem::resize_file(path, size + 1); }),
            {"b\nb", "refused not"});
        row("one became a second name of the kept one",
            [](const DuplicateFolders &folders, auto &) {
                std::filesystem::remove(folders.desktop() / "a");
                std::filesystem::create_hard_link(folders.downloads() / "kept", folders.desktop() / "a");
            },
            {"b\nb", "refused not"});
        row("one became a pipe", onA([](const Path &path) {
                std::filesystem::remove(path);
                ::mkfifo(path.c_str(), 0600);
            }),
            {"b\nb", "refused not"});
        row("the kept one is gone", onKept([](const Path &path) { std::filesystem::remove(path); }));
        row("the kept one was rewritten and given its old time", onKept(rewriteSecretly));
        row("the kept one was replaced by its like", onKept([](const Path &path) {
                std::filesystem::copy_file(path, path.native() + ".new");
                std::filesystem::last_write_time(path.native() + ".new",
                                                 std::filesystem::last_write_time(path));
                std::filesystem::rename(path.native() + ".new", path);
            }));
        row("the kept one became a link to another", onKept([](const Path &path) {
                std::filesystem::remove(path);
                std::filesystem::create_symlink("../Desktop/a", path);
            }));
        row("nobody said what was read",
            [](auto &, std::vector<DuplicateGroup> &groups) { groups.front().identities.clear(); });
        row("only one path is left",
            [](auto &, std::vector<DuplicateGroup> &groups) { groups.front().paths.resize(1); });
        row("no path is left",
            [](auto &, std::vector<DuplicateGroup> &groups) { groups = {DuplicateGroup()}; });
    }

    void nothingGoesElsewhereOrAfterAStop()
    {
        const DuplicateFolders folders;
        for (const char *name : {"Downloads/kept", "Desktop/a"})
            folders.write(name, contentOf(size));
        FolderTrash trash(folders.top());
        const auto groups = folders.scan();
        const auto removalIn = [&](const Paths &allowed, const StopToken &stop = {}) {
            return DuplicateFinder::removeDuplicates(groups, allowed, trash, stop);
        };
        QCOMPARE(removalIn({folders.downloads(), folders.top()}).stayed, 1);
        StopSource stopped;
        stopped.requestStop();
        QCOMPARE(removalIn(folders.both(), stopped.token()).stayed, 1);
        QVERIFY(std::filesystem::exists(folders.desktop() / "a"));
        QCOMPARE(removalIn({folders.desktop()}).trashed.size(), 1U);
    }

    void theKeptOneChangesDuringTheRemoval()
    {
        const DuplicateFolders folders;
        for (const char *name : {"Downloads/kept", "Desktop/a", "Desktop/b", "Desktop/c"})
            folders.write(name, contentOf(size));
        FolderTrash disposal(folders.top());
        disposal.afterEach = [&] { rewriteSecretly(folders.downloads() / "kept"); };
        const auto removal = DuplicateFinder::removeDuplicates(folders.scan(), folders.both(), disposal);
        QCOMPARE(removal.trashed.size(), 1U);
        QCOMPARE(removal.stayed, 2);
    }
};

QTEST_GUILESS_MAIN(DuplicateRemovalTest)
#include "DuplicateRemovalTest.moc"
