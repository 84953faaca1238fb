// Measures the searches for clutter beside the tools that find the same, one after the other in turns, and
// prints the medians in milliseconds, by the clock and of processor time, and by the clock the shortest:
//
//     cleanup_scans FOLDER [ROUNDS]
//
// The folder is made, filled with 200,000 small files and 100,000 folders, and removed again.

#include "bench/Timing.h"
#include "cleanup/DeepScanner.h"
#include "cleanup/DiskUsage.h"
#include "platform/ThisComputer.h"
#include "platform/posix/PosixShell.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>

namespace {

using namespace swabby;
namespace fs = std::filesystem;

constexpr int caches = 20;
constexpr int filesOfACache = 10'000;
constexpr int roots = 8;

/// Twenty folders of a hundred folders of a hundred files.
std::vector<fs::path> makeCaches(const fs::path &folder)
{
    std::vector<fs::path> paths;
    for (int cache = 0; cache < caches; ++cache) {
        paths.push_back(folder / ("cache" + std::to_string(cache)));
        for (int file = 0; file < filesOfACache; ++file) {
            const fs::path below = paths.back() / std::to_string(file / 100);
            if (file % 100 == 0)
                fs::create_directories(below);
            std::ofstream(below / std::to_string(file)) << "small";
        }
    }
    return paths;
}

/// Eight folders of 12,500 folders, down to the deepest that is searched, ten projects in each.
std::vector<fs::path> makeRoots(const fs::path &folder)
{
    std::vector<fs::path> paths;
    for (int root = 0; root < roots; ++root) {
        paths.push_back(folder / ("root" + std::to_string(root)));
        for (int leaf = 0; leaf < 12'500; ++leaf)
            fs::create_directories(paths.back() / std::to_string(leaf / 1'250) / std::to_string(leaf / 125) /
                                   std::to_string(leaf / 5) / std::to_string(leaf));
        for (int project = 0; project < 10; ++project)
            fs::create_directories(paths.back() / std::to_string(project) / "node_modules/inside");
    }
    return paths;
}

/// Each in turn, so that whatever else the machine does falls on both.
void compare(const char *what, int rounds, const std::function<void()> &ours,
             const std::function<void()> &tool)
{
    ours();
    tool();
    Times our;
    Times tools;
    for (int round = 0; round < rounds; ++round) {
        our.add(ours);
        tools.add(tool);
    }
    const auto least = [](const std::vector<double> &times) {
        return *std::min_element(times.begin(), times.end());
    };
    const auto print = [&](const char *figure, double our, double tool) {
        std::printf("%-26s %-9s %8.1f ms   one tool %8.1f ms   share %.2f\n", what, figure, our, tool,
                    our / tool);
    };
    print("processor", median(our.processor), median(tools.processor));
    print("median", median(our.clock), median(tools.clock));
    print("least", least(our.clock), least(tools.clock)); // the quietest round, on a machine that is busy
}

} // namespace

int main(int argumentCount, char **arguments)
{
    const fs::path folder = argumentCount > 1 ? arguments[1] : "";
    const int rounds = argumentCount > 2 ? std::max(1, std::atoi(arguments[2])) : 15;
    if (folder.empty() || !fs::create_directories(folder)) {
        std::fprintf(stderr, "usage: cleanup_scans FOLDER [ROUNDS]   the folder may not exist yet\n");
        return 2;
    }
    const auto machine = makeThisComputer();
    machine->cleanup.projectRoots = makeRoots(folder);
    machine->cleanup.downloads.clear();
    machine->cleanup.desktop.clear();
    PosixShell tools(machine->stop.token());
    const std::vector<fs::path> paths = makeCaches(folder);

    std::vector<std::string> diskUsage = {"-sk"};
    for (const fs::path &path : paths)
        diskUsage.push_back(path.native());
    compare(
        "sizes of 20 caches", rounds,
        [&] {
            directorySizes({*machine, {}, {}}, paths);
        },
        [&] { tools.run("/usr/bin/du", diskUsage); });

    std::vector<std::string> search;
    for (const fs::path &root : machine->cleanup.projectRoots)
        search.push_back(root.native());
    for (const char *word : {"-maxdepth", "5", "-type", "d", "-name", "node_modules", "-prune", "-print"})
        search.emplace_back(word);
    compare(
        "search of 100,000 folders", rounds,
        [&] {
            DeepScanner::scan({*machine, {}, {}});
        },
        [&] { tools.run("/usr/bin/find", search); });
    fs::remove_all(folder);
    return 0;
}
