#include "benchmarks/Crowd.h"
#include "engine/Samplers.h"
#include "health/HealthRules.h"
#include "health/HistoryKeeper.h"
#include "health/HistoryStore.h"
#include "machine/MachineChoice.h"
#include "platform/mactools/HardwareReport.h"
#include "platform/mactools/LaunchdText.h"
#include "platform/mactools/NettopText.h"
#include "platform/mactools/PsText.h"
#include "platform/mactools/TopText.h"
#include "state/MachineSampler.h"

#include <QtCore/QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cstdlib>

namespace swabby {
namespace {

constexpr double noon = 1'790'000'000;

std::shared_ptr<Machine> thisComputer()
{
    QString problem;
    return chooseMachine(std::nullopt, &problem);
}

/// A whole background half. Its one-second wait is in the wall time and not in the processor's.
void refresh(benchmark::State &state)
{
    const Crowd crowd(static_cast<int>(state.range(0)));
    const auto machine = thisComputer();
    MachineSampler sampler(*machine);
    benchmark::DoNotOptimize(sampler.sample());
    for (auto _ : state)
        benchmark::DoNotOptimize(sampler.sample());
    state.counters["processes"] = Crowd::runningProcesses();
}
BENCHMARK(refresh)->Arg(200)->Arg(2000)->Iterations(5)->MeasureProcessCPUTime()->Unit(
    benchmark::kMillisecond);

void listing(benchmark::State &state)
{
    const Crowd crowd(static_cast<int>(state.range(0)));
    const auto machine = thisComputer();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            ProcessSampler::topProcesses(*machine->processes->begin(), 8, machine->ownProcessId));
}
BENCHMARK(listing)->Arg(200)->Arg(2000)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

/// What the same listing costs a person's shell: the children's processor time.
void listingByPs(benchmark::State &state)
{
    const Crowd crowd(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(std::system("ps -Ao pid,ppid,pcpu,pmem,rss,comm >/dev/null"));
}
BENCHMARK(listingByPs)->Arg(2000)->UseRealTime()->Unit(benchmark::kMillisecond);

History fullDay()
{
    History day;
    for (int minute = 0; minute < 1'440; ++minute)
        day.append({noon - 86'400 + minute * 60.0 + 0.123456, 12.3456789 + minute % 50, 61.23456789});
    return day;
}

void historySaveOnTheMainThread(benchmark::State &state)
{
    const QTemporaryDir folder;
    HistoryKeeper keeper(folder.path());
    const History day = fullDay();
    for (auto _ : state)
        keeper.keep(day, noon);
}
BENCHMARK(historySaveOnTheMainThread)->Iterations(200)->Unit(benchmark::kMicrosecond);

void historySaveWhole(benchmark::State &state)
{
    const QTemporaryDir folder;
    const History day = fullDay();
    for (auto _ : state)
        HistoryStore::save(folder.path(), day, noon);
}
BENCHMARK(historySaveWhole)->Unit(benchmark::kMillisecond)->UseRealTime();

void historyLoad(benchmark::State &state)
{
    const QTemporaryDir folder;
    HistoryStore::save(folder.path(), fullDay(), noon);
    for (auto _ : state)
        benchmark::DoNotOptimize(HistoryStore::load(folder.path(), noon));
}
BENCHMARK(historyLoad)->Unit(benchmark::kMillisecond);

void healthRules(benchmark::State &state)
{
    SystemStats stats;
    stats.cpuUsagePercent = 90;
    stats.memUsedBytes = 95;
    stats.memTotalBytes = 100;
    stats.diskFreeBytes = 1;
    stats.diskTotalBytes = 100;
    stats.thermalState = ThermalState::critical;
    QList<ProcessSample> processes;
    for (int pid = 1; pid <= 8; ++pid) {
        ProcessSample process;
        process.pid = pid;
        process.name = QStringLiteral("program");
        process.cpuPercent = pid * 12.0;
        processes.append(process);
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(computeHealth(stats, processes, {}, {}));
}
BENCHMARK(healthRules)->Unit(benchmark::kMicrosecond);

std::string repeated(const std::string &head, const std::string &line)
{
    constexpr int lines = 5'000;
    std::string text = head;
    for (int i = 0; i < lines; ++i)
        text += line;
    return text;
}

void parse(benchmark::State &state, const std::string &text, void (*parser)(std::string_view))
{
    for (auto _ : state)
        parser(text);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

BENCHMARK_CAPTURE(parse, psRows,
                  repeated("  PID  PPID  %CPU %MEM    RSS COMM\n",
                           " 1502     1  87.4  6.3 1064960 /Applications/Mill.app/Contents/MacOS/Mill\n"),
                  [](std::string_view text) { benchmark::DoNotOptimize(parseProcessRows(text)); })
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(parse, top, repeated("PID    COMMAND          POWER\n", "1502   Mill Studio      12.5 \n"),
                  [](std::string_view text) { benchmark::DoNotOptimize(parseTop(text)); })
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(parse, nettop, repeated(",bytes_in,bytes_out,\n", "com.example.mill.1502,1200,300,\n"),
                  [](std::string_view text) { benchmark::DoNotOptimize(parseNettop(text)); })
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(parse, launchctl, repeated("gui/501/mill = {\n", "\tenvironment => something = value\n"),
                  [](std::string_view text) { benchmark::DoNotOptimize(parseLoadedJob(text)); })
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(parse, hardwareReport, repeated("Power:\n", "      Serial Number: F5D000000000\n"),
                  [](std::string_view text) { benchmark::DoNotOptimize(parseHardwareReport(text)); })
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace swabby

int main(int argc, char **argv)
{
    swabby::prepareProcess();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
