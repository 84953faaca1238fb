// Measures the full check beside each of its scans alone, in turns, and prints the medians in milliseconds,
// by the clock and of processor time:
//
//     swabby_check FOLDER [ROUNDS]
//
// The folder is made, becomes a home folder with 20 caches of 2,500 files and 300 pairs of duplicates, and is
// removed again. Nothing is asked of the model.

#include "flows/health/FullCheck.h"
#include "benchmarks/Timing.h"
#include "cleanup/CacheCleaner.h"
#include "cleanup/DeveloperCleanup.h"
#include "cleanup/DuplicateFinder.h"
#include "cleanup/Engines.h"
#include "platform/ThisComputer.h"

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <thread>

namespace {

using namespace swabby;
namespace fs = std::filesystem;

void makeHome(const fs::path &home)
{
    constexpr int caches = 20;
    constexpr int filesOfACache = 2'500;
    for (int cache = 0; cache < caches; ++cache)
        for (int file = 0; file < filesOfACache; ++file) {
            const fs::path folder = home / ".cache" / std::to_string(cache) / std::to_string(file / 100);
            if (file % 100 == 0)
                fs::create_directories(folder);
            std::ofstream(folder / std::to_string(file)) << std::string(9'000, 'c');
        }
    constexpr int pairs = 300;
    constexpr std::size_t words = 128 * 1024 / sizeof(std::uint32_t);
    std::mt19937 random(1);
    fs::create_directories(home / "Downloads");
    fs::create_directories(home / "Desktop");
    for (int pair = 0; pair < pairs; ++pair) {
        std::vector<std::uint32_t> content(words);
        std::generate(content.begin(), content.end(), std::ref(random)); // a copy would make all pairs alike
        for (const char *folder : {"Downloads", "Desktop"})
            std::ofstream(home / folder / std::to_string(pair), std::ios::binary)
                .write(reinterpret_cast<const char *>(content.data()),
                       static_cast<std::streamsize>(words * sizeof(std::uint32_t)));
    }
}

struct Measured {
    const char *what;
    std::function<void()> work;
    Times times{};
};

} // namespace

int main(int argumentCount, char **arguments)
{
    const fs::path home = argumentCount > 1 ? fs::absolute(arguments[1]) : "";
    const int rounds = argumentCount > 2 ? std::max(1, std::atoi(arguments[2])) : 15;
    if (home.empty() || !fs::create_directories(home)) {
        std::fprintf(stderr, "usage: swabby_check FOLDER [ROUNDS]   the folder may not exist yet\n");
        return 2;
    }
    makeHome(home);
    for (const char *variable : {"XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
        qunsetenv(variable);
    qputenv("HOME", home.c_str());
    QCoreApplication application(argumentCount, arguments);
    const auto machine = makeThisComputer();
    AppState state(machine, Record::nothing);
    CloudAI ai(machine, {});
    FullCheck check(state, ai);
    QObject::connect(&check, &FullCheck::finished, &application, &QCoreApplication::quit);

    std::vector<Measured> scans = {
        {"known caches",
         [&] {
             CacheCleaner::scan({*machine, {}, {}});
         }},
        {"unknown caches",
         [&] {
             CacheCleaner::scanUnknownCaches({*machine, {}, {}});
         }},
        {"duplicates", [&] { DuplicateFinder::scan(duplicateFolders(*machine), {}, {}); }},
        {"simulator runtimes",
         [&] {
             DeveloperCleanup::scanSimulatorRuntimes({*machine, {}, {}});
         }},
        {"build cache",
         [&] {
             DeveloperCleanup::derivedDataSize({*machine, {}, {}});
         }},
        {"Docker",
         [&] {
             DeveloperCleanup::dockerStatus({*machine, {}, {}});
         }},
        {"full check", [&] {
             QMetaObject::invokeMethod(&check, &FullCheck::run, Qt::QueuedConnection);
             QCoreApplication::exec();
         }}};
    for (int round = 0; round <= rounds; ++round)
        for (Measured &scan : scans) {
            scan.times.add(scan.work);
            if (round == 0)
                scan.times = {}; // only fills the memory with what lies on the disk
        }
    fs::remove_all(home);

    double slowest = 0;
    double sum = 0;
    double work = 0;
    for (const Measured &scan : scans) {
        const double clock = median(scan.times.clock);
        const double processor = median(scan.times.processor);
        std::printf("%-20s %8.1f ms   processors %8.1f ms\n", scan.what, clock, processor);
        if (&scan == &scans.back())
            break;
        slowest = std::max(slowest, clock);
        sum += clock;
        work += processor;
    }
    const double whole = median(scans.back().times.clock);
    const double least = work / std::max(1U, std::thread::hardware_concurrency());
    std::printf(
        "full check: %.2f of its slowest scan alone, %.2f of all of them one after the other\n"
        "the scans' work alone keeps all processors busy for %.1f ms: %.2f of the slowest scan, and the "
        "full check takes %.2f of it\n",
        whole / slowest, whole / sum, least, least / slowest, whole / least);
    return 0;
}
