#include "cleanup/DuplicateFolders.h"

#include <QtTest/QTest>

#include <fcntl.h>
#include <map>
#include <random>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace swabby;

namespace {

using PathSet = std::set<Path>;
using Build = std::function<void(const DuplicateFolders &)>;

constexpr int cannotBeTried = 77;

/// The groups whatever their order and that of their paths, relative to the top.
std::set<PathSet> setsOf(const std::vector<DuplicateGroup> &groups, const Path &top)
{
    std::set<PathSet> sets;
    for (const DuplicateGroup &group : groups) {
        PathSet paths;
        for (const Path &path : group.paths)
            paths.insert(path.lexically_relative(top));
        sets.insert(paths);
    }
    return sets;
}

/// What the work returns in a process of its own, which may give up its rights or change its mounts.
int inChild(const std::function<int()> &work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work());
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void makeSocket(const Path &path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path.native().copy(address.sun_path, sizeof address.sun_path - 1);
    const int number = ::socket(AF_UNIX, SOCK_STREAM, 0);
    QCOMPARE(::bind(number, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    ::close(number);
}

} // namespace

class DuplicateFinderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatIsADuplicate_data()
    {
        QTest::addColumn<Build>("build");
        QTest::addColumn<std::set<PathSet>>("expected");
        const auto row = [](const char *name, const Build &build, const std::set<PathSet> &expected = {}) {
            QTest::newRow(name) << build << expected;
        };
        const auto pair = [](const std::string &first, const std::string &second) -> Build {
            return [=](const DuplicateFolders &folders) {
                folders.write("Downloads/a", first);
                folders.write("Downloads/b", second);
            };
        };
        const std::set<PathSet> both = {{"Downloads/a", "Downloads/b"}};
        const std::string large = contentOf(400'000);
        row("4,096 bytes", pair(contentOf(4'096), contentOf(4'096)));
        row("4,097 bytes", pair(contentOf(4'097), contentOf(4'097)), both);
        row("one byte longer", pair(contentOf(5'001), contentOf(5'000)));
        row("larger than what is read at once", pair(large, large), both);
        for (const std::size_t place : {0, 4'095, 4'096, 131'072, 200'000, 395'903, 395'904, 399'999})
            row(qPrintable(u"one byte differs at %1"_qs.arg(place)), pair(large, changedAt(large, place)));
        row("only the last byte of 4,097", pair(contentOf(4'097), changedAt(contentOf(4'097), 4'096)));
        row("names that are no text",
            [](const DuplicateFolders &folders) {
                for (const std::string &name : {std::string("line\nbreak"), std::string("\xff\xfe"),
                                                std::string(255, 'x'), std::string(" ")})
                    folders.write(Path("Desktop") / name, contentOf(5'000));
            },
            {{"Desktop/line\nbreak", "Desktop/\xff\xfe", Path("Desktop") / std::string(255, 'x'),
              "Desktop/ "}});
        row("in a folder below", [](const DuplicateFolders &folders) {
            std::filesystem::create_directory(folders.downloads() / "below");
            folders.write("Downloads/below/a", contentOf(5'000));
            folders.write("Downloads/a", contentOf(5'000));
        });
        row(
            "beside what is no file",
            [pair](const DuplicateFolders &folders) {
                pair(contentOf(5'000), contentOf(5'000))(folders);
                QCOMPARE(::mkfifo((folders.downloads() / "pipe").c_str(), 0600), 0);
                makeSocket(folders.downloads() / "socket");
                std::filesystem::create_symlink("/dev/zero", folders.downloads() / "device");
                std::filesystem::create_symlink("nowhere", folders.downloads() / "dangling");
            },
            both);
        row("a link to the file", [](const DuplicateFolders &folders) {
            folders.write("Downloads/a", contentOf(5'000));
            std::filesystem::create_symlink(folders.downloads() / "a", folders.desktop() / "a");
        });
        row("a second name of the file", [](const DuplicateFolders &folders) {
            folders.write("Downloads/a", contentOf(5'000));
            std::filesystem::create_hard_link(folders.downloads() / "a", folders.desktop() / "a");
        });
        row(
            "a second name of a file that has a copy",
            [pair](const DuplicateFolders &folders) {
                pair(contentOf(5'000), contentOf(5'000))(folders);
                std::filesystem::create_hard_link(folders.downloads() / "b", folders.desktop() / "b");
            },
            both);
        row(
            "one folder linked to the other",
            [pair](const DuplicateFolders &folders) {
                pair(contentOf(5'000), contentOf(5'000))(folders);
                std::filesystem::remove(folders.desktop());
                std::filesystem::create_directory_symlink(folders.downloads(), folders.desktop());
            },
            both);
        row(
            "one folder missing",
            [pair](const DuplicateFolders &folders) {
                pair(contentOf(5'000), contentOf(5'000))(folders);
                std::filesystem::remove(folders.desktop());
            },
            both);
    }

    void whatIsADuplicate()
    {
        QFETCH(Build, build);
        const DuplicateFolders folders;
        build(folders);
        QTEST(setsOf(folders.scan(), folders.top()), "expected");
    }

    void theFirstFoundIsKeptAndTheMostWastefulComesFirst()
    {
        const DuplicateFolders folders;
        for (const char *name : {"Desktop/m1", "Downloads/m2", "Downloads/m3"})
            folders.write(name, contentOf(6'000, 1));
        for (const char *name : {"Desktop/a", "Desktop/b", "Desktop/c", "Downloads/d", "Downloads/e"})
            folders.write(name, contentOf(5'000, 2));
        for (const char *name : {"Desktop/large 1", "Downloads/large 2"})
            folders.write(name, contentOf(50'000, 3));
        const auto groups = folders.scan();
        QCOMPARE(groups.size(), 3U);
        QCOMPARE(groups[0].name(), u"large 2"_qs);
        QCOMPARE(groups[0].sizeBytes, 50'000);
        QCOMPARE(groups[1].wastedBytes(), 20'000);
        QCOMPARE(groups[2].wastedBytes(), 12'000);
        for (const DuplicateGroup &group : groups) {
            QCOMPARE(group.paths.front().parent_path(), folders.downloads());
            QCOMPARE(group.paths.back().parent_path(), folders.desktop());
        }
        const auto turned = DuplicateFinder::scan({folders.desktop(), folders.downloads()}, {}, {});
        QCOMPARE(turned[0].name(), u"large 1"_qs);
    }

    void whatHasToStayTakesNoPart()
    {
        const DuplicateFolders folders;
        for (const char *name : {"Downloads/a", "Downloads/b", "Desktop/c", "Desktop/d"})
            folders.write(name, contentOf(5'000));
        std::filesystem::create_hard_link(folders.desktop() / "d", folders.desktop() / "second name of d");
        const auto without = [&](const Paths &excluded) {
            return setsOf(DuplicateFinder::scan(folders.both(), ExcludeList(excluded), {}), folders.top());
        };
        using Sets = std::set<PathSet>;
        QCOMPARE(without({folders.downloads() / "a", folders.desktop() / "d"}),
                 Sets({{"Downloads/b", "Desktop/c"}}));
        QCOMPARE(without({folders.desktop()}), Sets({{"Downloads/a", "Downloads/b"}}));
        QCOMPARE(without({folders.top()}), Sets());
    }

    void whatMayNotBeReadIsLeftOut()
    {
        if (::geteuid() != 0)
            QSKIP("only root can become somebody else");
        const DuplicateFolders folders;
        ::chmod(folders.top().c_str(), 0755);
        for (const char *name : {"Downloads/a", "Downloads/b", "Desktop/secret"})
            folders.write(name, contentOf(5'000));
        ::chmod((folders.desktop() / "secret").c_str(), 0);
        const int found = inChild([&] {
            if (::setuid(65'534) != 0)
                return cannotBeTried;
            const std::set<PathSet> expected = {{"Downloads/a", "Downloads/b"}};
            return setsOf(folders.scan(), folders.top()) == expected ? 0 : 1;
        });
        QCOMPARE(found, 0);
    }

    void aFolderMountedTwiceIsOneFolder()
    {
        const DuplicateFolders folders;
        folders.write("Downloads/a", contentOf(5'000));
        const int found = inChild([&] {
            if (::unshare(CLONE_NEWNS) != 0 ||
                ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
                ::mount(folders.downloads().c_str(), folders.desktop().c_str(), nullptr, MS_BIND, nullptr) !=
                    0)
                return cannotBeTried;
            if (!std::filesystem::exists(folders.desktop() / "a"))
                return 2;
            return folders.scan().empty() ? 0 : 1;
        });
        if (found == cannotBeTried)
            QSKIP("may not mount");
        QCOMPARE(found, 0);
    }

    void whatChangesWhileItIsReadIsInNoGroup_data()
    {
        QTest::addColumn<std::size_t>("count");
        QTest::newRow("a few, read side by side") << std::size_t(3);
        QTest::newRow("many, known by their digests") << std::size_t(40);
    }

    void whatChangesWhileItIsReadIsInNoGroup()
    {
        QFETCH(std::size_t, count);
        const DuplicateFolders folders;
        const std::string content = contentOf(400'000);
        PathSet unchanged;
        for (std::size_t number = 0; number < count; ++number) {
            const Path name = Path("Downloads") / std::to_string(number);
            folders.write(name, content);
            // So far from now that a change shows however coarse the system's clock is.
            std::filesystem::last_write_time(folders.top() / name, std::filesystem::file_time_type());
            unchanged.insert(name);
        }
        ScanControl control;
        control.progress = [&](const ScanProgress &now) {
            // The first bytes of this one have been read, the last ones not yet.
            const Path name = Path("Downloads") / now.what.toStdString();
            if (unchanged.size() == count && unchanged.erase(name) > 0)
                folders.write(name, changedAt(content, 0));
        };
        const auto found = setsOf(folders.scan(control), folders.top());
        QCOMPARE(found, std::set<PathSet>({unchanged}));
        QCOMPARE(unchanged.size(), count - 1);
    }

    void aStopEndsTheReading()
    {
        const DuplicateFolders folders;
        constexpr std::int64_t size = 256 << 20;
        for (const char *name : {"Downloads/a", "Downloads/b"}) {
            folders.write(name, {});
            std::filesystem::resize_file(folders.top() / name, size); // without a byte on the disk
        }
        StopSource source;
        ScanProgress last;
        const ScanControl control = {source.token(), [&](const ScanProgress &now) {
                                         last = now;
                                         source.requestStop();
                                     }};
        QVERIFY(folders.scan(control).empty());
        QVERIFY2(last.done < 3 << 20, qPrintable(QString::number(last.done)));
        QCOMPARE(last.total, 2 * size);
        QVERIFY(!DuplicateFinder::streamingSHA256(folders.downloads() / "a", source.token()));
    }

    void theDigestOfAFile()
    {
        const DuplicateFolders folders;
        folders.write("million", std::string(1'000'000, 'a'));
        folders.write("empty", {});
        std::filesystem::create_symlink("million", folders.top() / "link");
        QCOMPARE(::mkfifo((folders.top() / "pipe").c_str(), 0600), 0);
        const auto digest = [&](const char *name) {
            return DuplicateFinder::streamingSHA256(folders.top() / name).value_or("none");
        };
        QCOMPARE(digest("million"), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
        QCOMPARE(digest("empty"), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
        for (const char *none : {"link", "pipe", "Desktop", "missing"})
            QCOMPARE(digest(none), "none");
    }

    void inAnyTreeWhatComparingEverythingFinds_data()
    {
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 1; seed <= 12; ++seed)
            QTest::newRow(qPrintable(QString::number(seed))) << seed;
    }

    /// Few and many files of one size, which differ nowhere, at their ends or in between.
    void inAnyTreeWhatComparingEverythingFinds()
    {
        QFETCH(unsigned, seed);
        std::mt19937 random(seed);
        const auto below = [&](std::size_t bound) { return random() % bound; };
        const DuplicateFolders folders;
        std::map<std::string, PathSet> byContent;
        int number = 0;
        std::int64_t candidateBytes = 0;
        for (const std::size_t size : {4'096, 4'097, 8'192, 8'193, 20'000, 135'168, 135'169, 300'000}) {
            const std::size_t count = std::array{2, 5, 31, 32, 33, 50}[below(6)];
            for (std::size_t i = 0; i < count; ++i) {
                const std::size_t places[] = {0, 4'095, size / 2, size - 4'096, size - 1};
                std::string content = contentOf(size);
                if (below(2) == 0)
                    content = changedAt(content, places[below(5)]);
                const Path name = Path(below(2) == 0 ? "Downloads" : "Desktop") / std::to_string(number++);
                folders.write(name, content);
                byContent[std::move(content)].insert(name);
            }
            candidateBytes += size > 4'096 ? static_cast<std::int64_t>(size * count) : 0;
        }
        std::set<PathSet> expected;
        for (const auto &[content, paths] : byContent)
            if (content.size() > 4'096 && paths.size() > 1)
                expected.insert(paths);

        ScanProgress last;
        bool goesForward = true;
        const auto groups = folders.scan({{}, [&](const ScanProgress &now) {
                                              goesForward = goesForward && now.done >= last.done;
                                              last = now;
                                          }});
        QCOMPARE(setsOf(groups, folders.top()), expected);
        QVERIFY(std::is_sorted(groups.begin(), groups.end(), [](const auto &left, const auto &right) {
            return left.wastedBytes() > right.wastedBytes();
        }));
        QVERIFY(goesForward);
        QCOMPARE(last.done, candidateBytes);
        QCOMPARE(last.total, candidateBytes);
    }
};

QTEST_GUILESS_MAIN(DuplicateFinderTest)
#include "DuplicateFinderTest.moc"
