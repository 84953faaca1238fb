// How what takes longest grows, in milliseconds of processor time: with the files of a folder and with the
// processes of the computer:
//
//     swabby_growth FOLDER [MOST-FILES [MOST-PROCESSES]]   1,000,000 and 10,000 unless told
//
// The folder is made, becomes a home folder, and is removed again.

#include "benchmarks/Crowd.h"
#include "benchmarks/Timing.h"
#include "cleanup/DiskUsage.h"
#include "cleanup/DuplicateFinder.h"
#include "machine/MachineChoice.h"
#include "platform/ThisComputer.h"
#include "state/AppState.h"

#include <QtCore/QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace {

using namespace swabby;
namespace fs = std::filesystem;

double cost(const std::function<void()> &work)
{
    Times times;
    times.add(work);
    return times.processor.front();
}

/// Files that nobody has to read: each has a size of its own, and none takes room. All in one folder, or a
/// hundred in each.
void makeFiles(const fs::path &folder, int count, bool isFlat)
{
    constexpr int smallest = 5'000;
    fs::path place = folder;
    for (int file = 0; file < count; ++file) {
        if (!isFlat && file % 100 == 0)
            place = folder / std::to_string(file / 10'000) / std::to_string(file / 100);
        if (file % 100 == 0)
            fs::create_directories(place);
        const fs::path path = place / std::to_string(file);
        std::ofstream(path).close();
        fs::resize_file(path, static_cast<std::uintmax_t>(smallest + file));
    }
}

/// The most memory this process has held since the last call, in MB.
double peakMemory()
{
    std::ifstream status("/proc/self/status");
    double megabytes = 0;
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            megabytes = std::atof(line.c_str() + sizeof "VmHWM:") / 1'000;
    std::ofstream("/proc/self/clear_refs") << 5;
    return megabytes;
}

void growFiles(const fs::path &home, int most)
{
    std::printf("%9s %12s %12s %12s %12s %10s\n", "files", "duplicates", "measured", "deleted", "ns a file",
                "peak MB");
    for (int files = most / 100; files <= most; files *= 10) {
        const auto machine = makeThisComputer();
        const fs::path flat = home / "Downloads" / "flat", cache = home / ".cache" / "many";
        makeFiles(flat, files, true);
        makeFiles(cache, files, false);
        peakMemory();
        const double listed = cost([&] { DuplicateFinder::scan({flat}, {}, {}); });
        const double measured = cost([&] { directorySizes({*machine, {}, {}}, {cache}); });
        const double deleted = cost([&] {
            machine->disposal->deleteOutright({cache, home, *FileIdentity::of(cache)});
        });
        std::printf("%9d %9.0f ms %9.0f ms %9.0f ms %12.0f %10.1f\n", files, listed, measured, deleted,
                    1e6 * (listed + measured + deleted) / files, peakMemory());
        std::fflush(stdout);
        fs::remove_all(flat);
    }
}

void growProcesses(int most)
{
    std::printf("%9s %12s %12s %15s %10s\n", "processes", "start", "a refresh", "us a process", "peak MB");
    for (const int processes : {most / 50, most / 5, most}) {
        const Crowd crowd(processes);
        const int running = Crowd::runningProcesses();
        constexpr int rounds = 5;
        QString problem;
        peakMemory();
        std::unique_ptr<AppState> state;
        const auto refresh = [&] {
            state->refresh();
            QCoreApplication::exec();
        };
        const double start = cost([&] {
            state = std::make_unique<AppState>(chooseMachine(std::nullopt, &problem), Record::nothing);
            QObject::connect(state.get(), &AppState::applied, QCoreApplication::instance(),
                             &QCoreApplication::quit, Qt::QueuedConnection);
            refresh();
        });
        Times times;
        for (int round = 0; round < rounds; ++round)
            times.add(refresh);
        std::printf("%9d %9.1f ms %9.1f ms %15.1f %10.1f\n", running, start, median(times.processor),
                    1e3 * median(times.processor) / running, peakMemory());
        std::fflush(stdout);
    }
}

} // namespace

int main(int argumentCount, char **arguments)
{
    const fs::path home = argumentCount > 1 ? fs::absolute(arguments[1]) : "";
    const int files = argumentCount > 2 ? std::max(100, std::atoi(arguments[2])) : 1'000'000;
    const int processes = argumentCount > 3 ? std::max(50, std::atoi(arguments[3])) : 10'000;
    if (home.empty() || !fs::create_directories(home)) {
        std::fprintf(stderr, "usage: swabby_growth FOLDER [MOST-FILES [MOST-PROCESSES]]   the folder may not "
                             "exist yet\n");
        return 2;
    }
    for (const char *variable : {"XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
        qunsetenv(variable);
    qputenv("HOME", home.c_str());
    prepareProcess();
    QCoreApplication application(argumentCount, arguments);
    growFiles(home, files);
    growProcesses(processes);
    fs::remove_all(home);
    return 0;
}
