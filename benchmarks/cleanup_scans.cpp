// Makes folders to be searched for clutter, and searches them in a process of its own, so that it can be
// timed beside other programs:
//
//     cleanup_scans make FOLDER      200,000 small files in 20 folders, 100,000 folders in 8 others
//     cleanup_scans size FOLDER      what each of the 20 takes
//     cleanup_scans search FOLDER    the projects in the 8

#include "cleanup/DeepScanner.h"
#include "cleanup/DiskUsage.h"
#include "platform/ThisComputer.h"

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace swabby;
namespace fs = std::filesystem;

constexpr int cacheCount = 20;
constexpr int filesOfACache = 10'000;
constexpr int rootCount = 8;

/// A hundred folders of a hundred files in each.
void makeCaches(const std::vector<fs::path> &caches)
{
    for (const fs::path &cache : caches)
        for (int file = 0; file < filesOfACache; ++file) {
            const fs::path below = cache / std::to_string(file / 100);
            if (file % 100 == 0)
                fs::create_directories(below);
            std::ofstream(below / std::to_string(file)) << "small";
        }
}

/// 12,500 folders in each, down to the deepest that is searched, and ten projects.
void makeRoots(const std::vector<fs::path> &roots)
{
    for (const fs::path &root : roots) {
        for (int leaf = 0; leaf < 12'500; ++leaf)
            fs::create_directories(root / std::to_string(leaf / 1'250) / std::to_string(leaf / 125) /
                                   std::to_string(leaf / 5) / std::to_string(leaf));
        for (int project = 0; project < 10; ++project)
            fs::create_directories(root / std::to_string(project) / "node_modules/inside");
    }
}

} // namespace

int main(int argumentCount, char **arguments)
{
    const std::string what = argumentCount == 3 ? arguments[1] : "";
    const fs::path folder = argumentCount == 3 ? arguments[2] : "";
    std::vector<fs::path> roots;
    std::vector<fs::path> caches;
    for (int number = 0; number < rootCount; ++number)
        roots.push_back(folder / ("root" + std::to_string(number)));
    for (int number = 0; number < cacheCount; ++number)
        caches.push_back(folder / ("cache" + std::to_string(number)));
    const auto machine = makeThisComputer();
    if (what == "make") {
        makeRoots(roots);
        makeCaches(caches);
    } else if (what == "size") {
        const auto sizes = directorySizes({*machine, {}, {}}, caches);
        std::printf("%zu folders\n", sizes.size());
    } else if (what == "search") {
        machine->cleanup.projectRoots = roots;
        machine->cleanup.downloads.clear();
        machine->cleanup.desktop.clear();
        std::printf("%zu found\n", DeepScanner::scan({*machine, {}, {}}).size());
    } else {
        std::fprintf(stderr, "usage: cleanup_scans make|size|search FOLDER\n");
        return 2;
    }
    return 0;
}
