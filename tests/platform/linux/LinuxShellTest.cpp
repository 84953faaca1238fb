#include "platform/linux/LinuxShell.h"
#include "platform/linux/DiskTools.h"
#include "support/OwnMounts.h"
#include "support/RandomTree.h"
#include "support/Table.h"

#include <QtTest/QTest>

#include <sys/mount.h>
#include <sys/stat.h>

using namespace swabby;

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// The first question that is answered in other words than the tool's; all of them are about that place.
std::string difference(const fs::path &path)
{
    PosixShell tools((StopToken()));
    const auto never = [] { return false; };
    const auto compare = [&](const std::optional<std::string> &own, const char *tool, const Words &words) {
        const std::string said = tools.run(tool, words, ToolOutput::fileNames).value_or("nothing");
        return own == said ? std::string() : own.value_or("no answer") + " for " + said;
    };
    const Words measuring = {"-sk", path.native()};
    std::string found = compare(diskUsageText(measuring, never), "/usr/bin/du", measuring);
    for (const char *levels : {"1", "2", "5", "6"}) {
        const Words search = {path.native(), "-maxdepth",    levels,   "-type", "d",
                              "-name",       "node_modules", "-prune", "-print"};
        if (found.empty() && fs::is_directory(fs::symlink_status(path)))
            found = compare(folderSearchText(search, never), "/usr/bin/find", search);
    }
    return found;
}

} // namespace

class LinuxShellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Whatever lies there, at every border of the search, and where something is closed to the user.
    void saysWhatTheToolsSay()
    {
        for (std::uint32_t seed = 1; seed <= 8; ++seed) {
            const std::string problem = inChild([seed]() -> std::string {
                becomeNobody();
                const Ground ground;
                const fs::path tree = ground / "tree";
                growOutside(ground / "outside");
                growRandomTree(tree, ground / "outside", seed);
                const fs::path own = tree / "own";
                for (const char *folder :
                     {"a/b/c/d/node_modules", "a/b/c/d/e/node_modules", "a/node_modules/node_modules", "file",
                      "link", "line\nend/node_modules", "\xFF/node_modules", "closed/node_modules",
                      "shut/in"})
                    fs::create_directories(own / folder);
                writeBytes(own / "file/node_modules", "no folder");
                fs::create_directory_symlink("../a", own / "link/node_modules");
                writeBytes(own / "sparse", "not all of it is there");
                fs::resize_file(own / "sparse", 1'000'000'000);
                fs::create_hard_link(own / "sparse", own / "a/another name");
                ::chmod((own / "closed").c_str(), 0);
                ::chmod((own / "shut").c_str(), S_IRUSR);
                for (const fs::path &path : {tree, own, own / "a", own / "a/b/c/d/e", own / "sparse",
                                             own / "link/node_modules", own / "shut"})
                    if (const std::string found = difference(path); !found.empty())
                        return path.native() + ": " + found;
                return {};
            });
            QCOMPARE(QString::fromStdString(problem), QString());
        }
    }

    void leavesTheRestToTheTool()
    {
        const Ground ground;
        fs::create_directories(ground / "in/node_modules");
        compareTable(R"(
            -sk @                                                             | own
            -sk @/nothing                                                     | the tool
            -sk @ @                                                           | the tool
            -sm @                                                             | the tool
            -sk in                                                            | the tool
            @ -maxdepth 5 -type d -name node_modules -prune -print            | own
            @/in -maxdepth 5 -type d -name in -prune -print                   | the tool
            @ -maxdepth 0 -type d -name node_modules -prune -print            | the tool
            @ -maxdepth 5 -type f -name node_modules -prune -print            | the tool
            @ -maxdepth 5 -type d -name n* -prune -print                      | the tool
            @ -maxdepth 5 -type d -name node_modules -print                   | the tool
        )",
                     [&](const Cells &row) {
                         Words words;
                         for (QString word : row.text(0).split(u' ', Qt::SkipEmptyParts))
                             words.push_back(
                                 word.replace(u'@', QString::fromStdString(ground.path())).toStdString());
                         const auto never = [] { return false; };
                         const bool isOwn = diskUsageText(words, never) || folderSearchText(words, never);
                         return isOwn ? QStringLiteral("own") : QStringLiteral("the tool");
                     });
    }

    /// What is mounted below may hang, and only a tool can be ended then.
    void aMountBelowIsTheTools()
    {
        const std::string problem = inOwnMounts([]() -> std::string {
            const Ground ground;
            fs::create_directories(ground / "in/below/node_modules");
            const fs::path place = ground / "in/below";
            if (::mount("none", place.c_str(), "tmpfs", 0, nullptr) != 0)
                return "SKIP";
            const std::string empty = difference(ground.path()); // its count of folders is no sign
            fs::create_directories(place / "node_modules");
            const std::string found = difference(ground.path());
            LinuxShell shell((StopToken()));
            const auto said = shell.run("/usr/bin/find",
                                        {ground.path().native(), "-maxdepth", "5", "-type", "d", "-name",
                                         "node_modules", "-prune", "-print"},
                                        ToolOutput::fileNames);
            const std::string inside = difference(place);
            ::umount(place.c_str());
            if (empty.find("no answer") != 0 || found.find("no answer") != 0 || !inside.empty())
                return empty + " / " + found + " / " + inside;
            return said == place.native() + "/node_modules\n" ? "" : "what is mounted was not searched";
        });
        if (problem == "SKIP")
            QSKIP("nothing may be mounted here");
        QCOMPARE(QString::fromStdString(problem), QString());
    }

    void aStopEndsIt()
    {
        const Ground ground;
        for (int file = 0; file < 10; ++file)
            writeBytes(ground / std::to_string(file), "x");
        int asked = 0;
        QVERIFY(!diskUsageText({"-sk", ground.path().native()}, [&] { return ++asked == 5; }));
        QCOMPARE(asked, 5);
    }
};

QTEST_GUILESS_MAIN(LinuxShellTest)
#include "LinuxShellTest.moc"
