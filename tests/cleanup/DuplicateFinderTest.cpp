#include "cleanup/DuplicateFolders.h"
#include "support/RandomTree.h"
#include "support/Table.h"

#include <QtTest/QTest>

#include <fcntl.h>
#include <map>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

using namespace swabby;

namespace {

using PathSet = std::set<Path>;

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

} // namespace

class DuplicateFinderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatIsADuplicate()
    {
        const std::string large = contentOf(400'000);
        const auto areFound = [](const std::string &first, const std::string &second) {
            const DuplicateFolders folders;
            folders.write("Downloads/a", first);
            folders.write("Downloads/b", second);
            return folders.scan().size() == 1;
        };
        QVERIFY(!areFound(contentOf(4'096), contentOf(4'096)));
        QVERIFY(areFound(contentOf(4'097), contentOf(4'097)));
        QVERIFY(!areFound(contentOf(5'001), contentOf(5'000)));
        QVERIFY(areFound(large, large));
        for (const std::size_t place : {0, 4'095, 4'096, 131'072, 200'000, 395'903, 395'904, 399'999})
            QVERIFY2(!areFound(large, changedAt(large, place)), qPrintable(QString::number(place)));
        QVERIFY(!areFound(contentOf(4'097), changedAt(contentOf(4'097), 4'096)));
        compareTable(fixture(u"cleanup/duplicates.txt"_qs), [](const Cells &row) {
            const DuplicateFolders folders;
            build(folders.top(), row[1], contentOf(5'000));
            QStringList words;
            for (const PathSet &paths : setsOf(folders.scan(), folders.top()))
                for (const Path &path : paths)
                    words.append(QString::fromStdString(path));
            return words.join(u' ');
        });
        const DuplicateFolders folders;
        const PathSet odd = {"Desktop/line\nbreak", "Desktop/\xff\xfe", "Desktop/" + std::string(255, 'x'),
                             "Desktop/ "};
        for (const Path &name : odd)
            folders.write(name, contentOf(5'000));
        QCOMPARE(setsOf(folders.scan(), folders.top()), std::set<PathSet>{odd});
    }

    /// Made in the order given, then found by their births, and by their times, which are all the same then.
    void whichCopyIsKept()
    {
        compareTable(fixture(u"cleanup/kept_copies.txt"_qs), [](const Cells &row) {
            const DuplicateFolders folders;
            const auto timeOf = [](const Path &path) { return std::filesystem::last_write_time(path); };
            Path before;
            for (const QString &name : row.text(0).split(u", "_qs)) {
                const Path path = folders.downloads() / name.toStdString();
                do { // until the disk's clock has moved on
                    std::filesystem::remove(path);
                    folders.write(path, contentOf(5'000));
                } while (!before.empty() && timeOf(path) <= timeOf(before));
                before = path;
            }
            const DuplicateGroup byBirth = folders.scan().at(0);
            for (const Path &path : byBirth.paths)
                std::filesystem::last_write_time(path, std::filesystem::file_time_type());
            const auto groups = DuplicateFinder::scan(folders.both(), {}, {}, FirstBy::modification);
            return byBirth.name() + u' ' + groups.at(0).name();
        });
    }

    void theFirstFolderIsKeptAndTheMostWastefulComesFirst()
    {
        const DuplicateFolders folders;
        build(folders.top(), "Desktop/m1 Downloads/m2 Downloads/m3", contentOf(6'000, 1));
        build(folders.top(), "Desktop/a Desktop/b Desktop/c Downloads/d Downloads/e", contentOf(5'000, 2));
        build(folders.top(), "Desktop/large1 Downloads/large2", contentOf(50'000, 3));
        const auto groups = folders.scan();
        QCOMPARE(groups.size(), 3U);
        QCOMPARE(groups[0].name(), u"large2"_qs);
        QCOMPARE(groups[0].sizeBytes, 50'000);
        QCOMPARE(groups[1].wastedBytes(), 20'000);
        QCOMPARE(groups[2].wastedBytes(), 12'000);
        for (const DuplicateGroup &group : groups) {
            QCOMPARE(group.paths.front().parent_path(), folders.downloads());
            QCOMPARE(group.paths.back().parent_path(), folders.desktop());
        }
        const auto turned = DuplicateFinder::scan({folders.desktop(), folders.downloads()}, {}, {});
        QCOMPARE(turned[0].name(), u"large1"_qs);
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
        const DuplicateFolders folders;
        ::chmod(folders.top().c_str(), 0755);
        for (const char *name : {"Downloads/a", "Downloads/b", "Desktop/secret"})
            folders.write(name, contentOf(5'000));
        ::chmod((folders.desktop() / "secret").c_str(), 0);
        const std::string problem = inChild([&] {
            becomeNobody();
            const std::set<PathSet> expected = {{"Downloads/a", "Downloads/b"}};
            return std::string(setsOf(folders.scan(), folders.top()) == expected ? "" : "others");
        });
        QCOMPARE(problem, std::string());
    }

    void whatChangesWhileItIsReadIsInNoGroup()
    {
        // A few, read side by side; many, known by their digests.
        for (const std::size_t count : {3U, 40U}) {
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

    /// Few and many files of one size, which differ nowhere, at their ends or in between.
    void inAnyTreeWhatComparingEverythingFinds()
    {
        for (unsigned seed = 1; seed <= 12; ++seed) {
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
                    const Path name =
                        Path(below(2) == 0 ? "Downloads" : "Desktop") / std::to_string(number++);
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
    }
};

QTEST_GUILESS_MAIN(DuplicateFinderTest)
#include "DuplicateFinderTest.moc"
