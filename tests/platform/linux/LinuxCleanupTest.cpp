#include "StandIn.h"
#include "cleanup/AppUninstaller.h"
#include "cleanup/CacheCleaner.h"
#include "cleanup/DeepScanner.h"
#include "cleanup/DeveloperCleanup.h"
#include "cleanup/DuplicateFolders.h"
#include "cleanup/RemovalRun.h"
#include "platform/linux/CacheFolder.h"
#include "platform/linux/LinuxDisposal.h"
#include "platform/linux/LinuxRunningApplications.h"
#include "platform/linux/ProcessTable.h"
#include "platform/machinefolder/FolderClock.h"
#include "platform/posix/LastTouch.h"
#include "platform/posix/PosixShell.h"
#include "support/OwnMounts.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <QtCore/QProcess>
#include <QtTest/QTest>

#include <sys/mount.h>
#include <unistd.h>

using namespace swabby;

namespace {

namespace fs = std::filesystem;

/// Somebody's home folder on this system, looked after with the computer's own tools.
class Home {
public:
    explicit Home(const std::string &cache = "home/.cache")
        : folders{files.path("home"), files.path(cache), files.path("home/.config"),
                  files.path("home/.local/share"), files.path("home/.local/state")},
          programs{files.path(), files.path("home"), {files.path("usr/bin"), files.path("home/.local/bin")}}
    {
        fs::create_directories(folders.home);
    }

    LinuxApplicationSource source() const
    {
        return {folders,
                programs,
                {files.path("home/.local/share/applications"), files.path("usr/share/applications")},
                {"com.swabby.app", "swabby", {files.path("home/Applications/Cleaner.AppImage")}}};
    }
    std::unique_ptr<Machine> machine() const
    {
        auto machine = std::make_unique<Machine>();
        machine->clock = std::make_unique<SystemClock>();
        machine->places.applicationData = QString::fromStdString(files.path("home/.local/share/Swabby"));
        machine->shell = std::make_unique<PosixShell>(machine->stop.token());
        machine->disposal = std::make_unique<LinuxDisposal>(folders.data, *machine->clock);
        machine->cleanup = linuxCleanupPlaces(folders);
        machine->applications = std::make_unique<LinuxApplicationSource>(source());
        machine->runningApplications = std::make_unique<LinuxRunningApplications>(
            source(), LinuxRunningApplications::Sources{[] {}, [](const auto &, const auto &) { return 0; }});
        return machine;
    }
    /// The path without the temporary folder in front.
    QString shortened(const fs::path &path) const
    {
        return QString::fromStdString(path).remove(QString::fromStdString(files.path() + '/'));
    }
    /// Files that occupy so many kibibytes.
    void fill(std::initializer_list<std::pair<const char *, std::size_t>> sizes) const
    {
        for (const auto &[file, kib] : sizes)
            files.write(file, std::string(kib * 1024, 'x'));
    }

    /// As if somebody had worked on them so many days from now.
    void touch(std::initializer_list<const char *> paths, int days) const
    {
        for (const char *path : paths)
            fs::last_write_time(files.path(path),
                                fs::file_time_type::clock::now() + std::chrono::hours(24 * days));
    }

    StandIn files;
    UserFolders folders;
    ProgramFolders programs;
};

} // namespace

class LinuxCleanupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFolderMountedTwiceIsOneFolder()
    {
        const DuplicateFolders folders;
        folders.write("Downloads/a", contentOf(5'000));
        const std::string problem = inOwnMounts([&]() -> std::string {
            if (::mount(folders.downloads().c_str(), folders.desktop().c_str(), nullptr, MS_BIND, nullptr) !=
                0)
                return "SKIP";
            if (!std::filesystem::exists(folders.desktop() / "a"))
                return "not mounted";
            return folders.scan().empty() ? "" : "found twice";
        });
        if (problem == "SKIP")
            QSKIP("mounting is not permitted here");
        QCOMPARE(problem, std::string());
    }

    void userFolders()
    {
        compareTable(fixture(u"linux/user_folders.txt"_qs), [](const Cells &row) {
            return QString::fromStdString(userFolderIn(row.string(1), "DOWNLOAD", "/h"));
        });
    }

    void cacheFolders()
    {
        // What the variable names, or where the usual folder leads, for a home folder at /h.
        compareTable(fixture(u"linux/cache_folders.txt"_qs), [](const Cells &row) {
            const StandIn files;
            const std::string said = row.string(1);
            const bool isLink = said.starts_with("->");
            const std::string home = isLink ? files.path("h") : "/h";
            files.write("h/Documents/x", {});
            files.write("h/.local/cache/x", {});
            if (isLink)
                files.link("h/.cache",
                           said.starts_with("->/h") ? files.path(said.substr(3)) : said.substr(2));
            files.write("config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"/mnt/papers\"\n");
            return QString::fromStdString(believedCacheFolder({.home = home,
                                                               .cache = isLink ? home + "/.cache" : said,
                                                               .config = files.path("config"),
                                                               .data = home + "/.local/share",
                                                               .state = home + "/.local/state"}))
                .remove(QString::fromStdString(files.path()));
        });
    }

    void places()
    {
        const Home home;
        home.files.link("home/everything", home.files.path("home"));
        home.files.write("home/.config/user-dirs.dirs",
                         "XDG_DOWNLOAD_DIR=\"$HOME/everything\"\nXDG_DESKTOP_DIR=\"$HOME/Bureau\"\n");
        const CleanupPlaces places = linuxCleanupPlaces(home.folders);
        QCOMPARE(home.shortened(places.downloads), u"home/Downloads"_qs); // the link leads home
        QCOMPARE(home.shortened(places.desktop), u"home/Bureau"_qs);
        QCOMPARE(home.shortened(places.knownCaches.front().path), u"home/.local/share/Trash"_qs);
        QCOMPARE(places.containerTools.back(), "/usr/bin/docker");
        QVERIFY(places.buildCache.empty() && places.simulatorTool.empty());
        QCOMPARE(lines(places.packageCleanups,
                       [&](const PackageCleanup &cleanup) {
                           QStringList words = {cleanup.onlyWhenChosen ? u"chosen"_qs : u"always"_qs};
                           for (const std::string &word : cleanup.words)
                               words.append(home.shortened(word));
                           return words.join(u' ');
                       }),
                 u"chosen HOMEBREW_CACHE=home/.cache/Homebrew brew cleanup -q\n"
                 "chosen PIP_CACHE_DIR=home/.cache/pip pip cache purge"_qs);
    }

    void caches()
    {
        Home home("elsewhere/cache");
        home.fill({{"elsewhere/cache/pip/http/a", 1'200},
                   {"elsewhere/cache/mozilla/firefox/b", 2'000},
                   {"elsewhere/cache/yarn/c", 900},
                   {"home/.cache/pip/d", 3'000}, // not where caches are
                   {"elsewhere/cache/caf\xe9/e", 21'000},
                   {"elsewhere/cache/waves/f", 20'100},
                   {"elsewhere/cache/nvidia/GLCache/k", 20'200}, // what holds a known one is none by itself
                   {"elsewhere/cache/go-build/fuzz/l", 20'100},
                   {"home/.m2/repository/m", 20'100},
                   {"home/tools/cargo/registry/cache/n", 5'000},
                   {"home/.cargo/registry/cache/o", 6'000}, // not where it was told to keep them
                   {"home/.gradle/caches/p", 7'000},
                   {"home/.var/app/org.example.Loom/cache/loom/q", 8'000},
                   {"home/.var/app/org.example.Tide/cache/tmp/r", 9'000},
                   {"home/.var/app/org.example.Tide/data/s", 9'000},
                   {"home/.var/app/org.example.Ebb/cache/JetBrains/t", 9'000},
                   {"elsewhere/cache/small/g", 19'000},
                   {"elsewhere/cache/rclone/vfs/i", 20'100},
                   {"elsewhere/cache/mozilla/other/j", 20'100},
                   {"home/.local/share/Trash/files/h", 4'000}});
        home.folders.cargo = home.files.path("home/tools/cargo");
        home.folders.gradle = home.folders.home; // everything, and not called after it
        home.files.link("home/.m2/wrapper", home.files.path("elsewhere")); // none is followed from there
        home.files.link("elsewhere/cache/npm", home.files.path("elsewhere"));
        home.fill({{"elsewhere/dists/u", 4'000}, {"elsewhere/_cacache/v", 4'000}});
        home.files.link("home/.var/app/org.example.Link", home.files.path("home/.var/app/org.example.Loom"));
        const auto machine = home.machine();
        const auto wordsOf = [](const CacheEntry &entry) {
            return entry.description + u'=' + QString::number(entry.sizeBytes / 1'000'000);
        };
        QCOMPARE(lines(CacheCleaner::scan({*machine, {}, {}}), wordsOf) + u'\n' +
                     lines(CacheCleaner::scanUnknownCaches({*machine, {}, {}}), wordsOf),
                 u"Graphics driver cache (NVIDIA)=20\nFlatpak app cache (org.example.Loom)=8\n"
                 "Coding tool cache (Gradle)=7\nCoding tool cache (Cargo)=5\n"
                 "Trash — stuff you already deleted=4\nFirefox's temporary browsing files=2\n"
                 "Coding tool cache (pip)=1\ncaf\uFFFD=21\nwaves=20"_qs);
        const auto tools = CacheCleaner::scanBuildTools({*machine, {}, {}});
        QCOMPARE(lines(tools, [&](const CacheEntry &entry) { return home.shortened(entry.path); }),
                 u"home/.gradle/caches\nhome/tools/cargo/registry/cache\nelsewhere/cache/pip"_qs);
        machine->cleanup.packageCleanups.clear(); // the computer's own package managers
        fs::remove_all(machine->cleanup.trash);
        const std::vector<CacheEntry> known = CacheCleaner::scan({*machine, {}, {}});
        QCOMPARE(CacheCleaner::clean(*machine, known, {}), std::vector<bool>(known.size(), true));
        QVERIFY(CacheCleaner::scan({*machine, {}, {}}).empty());
        QVERIFY(fs::exists(home.files.path("home/.var/app/org.example.Loom")));
        fs::remove_all(home.folders.cache); // the temporary folder cannot name everything in there
    }

    void forgottenThings()
    {
        const Home home;
        home.files.write("home/.config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/Telechargements\"\n");
        home.fill({{"home/Projects/Loom/node_modules/x", 49'500},
                   {"home/Projects/Weft/web/node_modules/x", 50'000},
                   {"home/Projects/Weft/packages/a/index.js", 1},
                   {"home/Projects/Weft/.git/HEAD", 1},
                   {"home/Telechargements/Machines/disk", 50'100}});
        home.files.write("home/Telechargements/film.mov", "");
        fs::resize_file(home.files.path("home/Telechargements/film.mov"), 60'000'000);
        home.files.write("home/Telechargements/system.iso", "");
        fs::resize_file(home.files.path("home/Telechargements/system.iso"), 30'000'000);
        const auto machine = home.machine();
        machine->clock = std::make_unique<FolderClock>(SystemClock().now());
        const auto found = [&] {
            return lines(DeepScanner::scan({*machine, {}, {}}), [](const DeepScanItem &item) {
                return item.description + u'|' + QString::number(item.daysOld);
            });
        };
        // An old time of modification says nothing of what was put there just now.
        home.touch({"home/Projects/Loom", "home/Telechargements/film.mov", "home/Telechargements/Machines"},
                   -300);
        QCOMPARE(found(), u"system.iso|0"_qs);
        machine->clock->advance(100.5 * 86'400);
        QCOMPARE(found(), u"film.mov|100\nMachines|100\nweb/node_modules|100\nLoom/node_modules|100\n"
                          "system.iso|100"_qs);
        home.touch({"home/Telechargements/Machines/disk", "home/Projects/Weft/packages/a/index.js"}, 99);
        QCOMPARE(found(), u"film.mov|100\nLoom/node_modules|100\nsystem.iso|100"_qs);
        QVERIFY(DeveloperCleanup::scanSimulatorRuntimes({*machine, {}, {}}).empty());
        QCOMPARE(DeveloperCleanup::derivedDataSize({*machine, {}, {}}), 0);
    }

    void howFarALookGoes()
    {
        const Home home;
        home.fill({{"home/a", 1}, {"home/b/c", 1}});
        const auto look = [&](std::size_t most, const StopToken &stop = {}) {
            return lastTouch(home.folders.home, {.mostEntries = most}, stop).has_value();
        };
        QVERIFY(look(3) && !look(2));
        StopSource stop;
        stop.requestStop();
        QVERIFY(!look(3, stop.token()));
        QVERIFY(!lastTouch(home.files.path("nothing"), {}, {}));
        if (::geteuid() == 0)
            return; // may look everywhere
        fs::permissions(home.files.path("home/b"), fs::perms::none);
        QVERIFY(!look(3));
        fs::permissions(home.files.path("home/b"), fs::perms::owner_all);
    }

    void applications()
    {
        const Home home;
        home.files.plant(fixture(u"linux/applications_at_home.txt"_qs));
        const auto machine = home.machine();
        QStringList offered;
        for (const InstalledApp &app : AppUninstaller::scanInstalledApps({*machine, {}, {}}))
            offered.append(home.shortened(app.path) + u'|' + app.name + u'|' + app.bundleID + u'|' +
                           home.shortened(app.foundIn));
        offered.sort();
        QCOMPARE(offered.join(u'\n'),
                 QString::fromUtf8(fixture(u"linux/applications_at_home.expected"_qs)).trimmed());
    }

    void leftovers()
    {
        const Home home;
        home.files.plant(fixture(u"linux/leftovers.txt"_qs));
        const auto machine = home.machine();
        const auto listed = [&](const InstalledApp &app) {
            home.files.plant("home/.local/share/applications/org.example.Loom.desktop | Loom | " +
                             QByteArray::fromStdString(app.path));
            return lines(AppUninstaller::scanLeftovers({*machine, {}, {}}, app),
                         [&](const AppLeftover &leftover) {
                             return home.shortened(leftover.path) + u'|' + leftover.description;
                         });
        };
        const QString all = QString::fromUtf8(fixture(u"linux/leftovers.expected"_qs)).trimmed();
        QCOMPARE(listed({home.files.path("home/opt/loom"), u"Loom"_qs, u"org.example.Loom"_qs, 1}), all);
        // What goes as the application, or with it, is no leftover.
        const QString less = QString(all).remove(u"home/.local/share/Loom|Support files\n"_qs);
        for (const char *path : {"home/.local/share/Loom", "home/.local/share/Loom/loom"})
            QCOMPARE(listed({home.files.path(path), u"Loom"_qs, u"org.example.Loom"_qs, 1}), less);
        // Where the variables name the home folder, what lies there is the person's.
        for (const char *said : {"home", "home/things", "data", ""}) {
            Home careless;
            careless.folders.data = careless.folders.config = careless.folders.state =
                careless.files.path(said);
            QCOMPARE(careless.source()
                         .leftoverPlaces({careless.files.path("home/x"), u"Loom"_qs, u"loom"_qs, {}})
                         .size(),
                     3U); // what is cached by either name, and the sandbox
        }
        // Folders that belong to everybody, and names that lead elsewhere.
        for (const QString &name : {u"trash"_qs, u"autostart"_qs, u".."_qs, u""_qs, u"../Loom"_qs})
            QCOMPARE(listed({home.files.path("home/opt/x"), name, name, 1}), QString());
    }

    void whatANamesakeMayUseStays()
    {
        compareTable(fixture(u"linux/namesakes.txt"_qs), [](const Cells &row) {
            const Home home;
            home.files.plant("home/opt/loom/loom | *\nhome/.config/Loom/settings | x\n"
                             "home/.local/share/applications/org.example.Loom.desktop | Loom | "
                             "ROOT/home/opt/loom/loom");
            QByteArray other = row[0];
            for (qsizetype cell = 1; cell < row.size() - 1; ++cell)
                other += " | " + row[cell];
            home.files.plant(other);
            const auto machine = home.machine();
            const InstalledApp app = AppUninstaller::scanInstalledApps({*machine, {}, {}}).at(0);
            const auto leftovers = AppUninstaller::scanLeftovers({*machine, {}, {}}, app);
            const bool goes = leftovers.front().description == u"Preferences";
            return leftovers.back().description == u"Menu entry" && goes ? u"goes"_qs : u"stays"_qs;
        });
    }

    void whatIsFoundGoes()
    {
        const Home home;
        const auto machine = home.machine();
        machine->clock = std::make_unique<FolderClock>(SystemClock().now());
        machine->disposal = std::make_unique<LinuxDisposal>(home.folders.data, *machine->clock);
        const auto isThere = [&](const char *path) { return fs::exists(home.files.path(path)); };

        home.fill({{"home/Projects/Loom/node_modules/x", 50'000}});
        machine->clock->advance(40.0 * 86'400);
        const auto items = DeepScanner::scan({*machine, {}, {}});
        QVERIFY(removeItems({RemovableItem::of(items.at(0))}, {}, *machine, {}).left.empty());
        QVERIFY(isThere("home/Projects/Loom") && !isThere("home/Projects/Loom/node_modules"));
        QVERIFY(isThere("home/.local/share/Trash/files/node_modules/x"));

        home.files.plant(
            "home/.local/lib/tide/tide | *\nhome/.config/Tide/settings | kept\n"
            "home/.local/share/applications/tide.desktop | Tide | ROOT/home/.local/lib/tide/tide");
        const InstalledApp app = AppUninstaller::scanInstalledApps({*machine, {}, {}}).at(0);
        const auto leftovers = AppUninstaller::scanLeftovers({*machine, {}, {}}, app);
        const auto uninstalled =
            removeItems({RemovableItem::of(AppUninstall{app, leftovers})}, {}, *machine, {});
        QCOMPARE(uninstalled.trashed.size(), 3U);
        QVERIFY(!isThere("home/.local/lib/tide") && !isThere("home/.config/Tide") &&
                !isThere("home/.local/share/applications/tide.desktop"));
        QVERIFY(AppUninstaller::scanInstalledApps({*machine, {}, {}}).empty());

        home.fill({{"home/.cache/pip/x", 1'200}, {"home/.cache/yarn/x", 1'100}});
        const ExcludeList excludes({home.files.path("home/.local/share/Trash/files/Tide")});
        const auto entries = CacheCleaner::scan({*machine, {}, excludes});
        QCOMPARE(entries.size(), 3U); // the Trash, pip's and yarn's
        fs::rename(home.files.path("home/.cache/yarn"), home.files.path("home/.cache/was yarn"));
        home.files.write("home/.cache/yarn/somebody's", "not what was found");
        machine->cleanup.packageCleanups.clear(); // the computer's own package managers
        QCOMPARE(CacheCleaner::clean(*machine, entries, excludes).at(1), true);
        QVERIFY(!isThere("home/.cache/pip") && isThere("home/.cache/yarn/somebody's"));
        QVERIFY(isThere("home/.local/share/Trash/files/Tide/settings"));
        QVERIFY(!isThere("home/.local/share/Trash/files/node_modules"));
    }

    void running()
    {
        const Home home;
        fs::create_directories(home.files.path("home/Applications"));
        const std::string program = home.files.path("home/Applications/Tail.AppImage");
        fs::copy_file(fs::canonical("/usr/bin/tail"), program);
        ProcessTable table({"/proc", [] { return 1.0; }, 0},
                           ProgramFinder("/proc", DesktopApplications({}, home.programs)));
        LinuxRunningApplications applications(home.source(),
                                              {[&] { table.list(); },
                                               [&](const std::string &path, const std::string &folder) {
                                                   return table.pidRunning(path, folder);
                                               }});
        QVERIFY(applications.list().empty());
        QProcess process;
        process.start(QString::fromStdString(program), {u"-f"_qs, u"/dev/null"_qs});
        QVERIFY(process.waitForStarted());
        const auto pid = static_cast<std::int32_t>(process.processId());
        QCOMPARE(applications.list(), (std::vector<RunningApplication>{{pid, u"Tail"_qs}}));
        process.kill();
        QVERIFY(process.waitForFinished());
        QVERIFY(applications.list().empty());
        // What its starter leads to runs from its folder, in somebody else's program.
        home.files.plant("home/opt/loom/loom | *\nhome/opt/loom/lib/main | read line\n"
                         "home/.local/share/applications/loom.desktop | Loom | ROOT/home/opt/loom/loom");
        process.start(u"/bin/sh"_qs, {QString::fromStdString(home.files.path("home/opt/loom/lib/main"))});
        QVERIFY(process.waitForStarted());
        QVERIFY(waitUntil([&] { return applications.list().size() == 1U; }));
        process.closeWriteChannel();
        QVERIFY(process.waitForFinished());
    }
};

QTEST_GUILESS_MAIN(LinuxCleanupTest)
#include "LinuxCleanupTest.moc"
