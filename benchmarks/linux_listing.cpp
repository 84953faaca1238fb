// What looking at a crowd of processes costs, beside the tools that print the same figures. Makes idle
// processes (2,000 unless told), then prints processor times in milliseconds and their shares:
//
//     linux_listing [PROCESSES] [ROUNDS] [DESCRIPTORS]

#include "platform/linux/LinuxProcessSurveyor.h"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace swabby;

double steadySeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double processorMilliseconds(int who)
{
    rusage usage = {};
    getrusage(who, &usage);
    const auto milliseconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

template <typename Work>
double cost(int who, int rounds, Work work)
{
    const double before = processorMilliseconds(who);
    for (int round = 0; round < rounds; ++round)
        work();
    return (processorMilliseconds(who) - before) / rounds;
}

double toolCost(const char *command, int rounds)
{
    return cost(RUSAGE_CHILDREN, rounds, [command] {
        if (std::system(command) != 0)
            std::fprintf(stderr, "%s failed\n", command);
    });
}

class Crowd {
public:
    explicit Crowd(int size)
    {
        for (int index = 0; index < size; ++index) {
            const pid_t child = fork();
            if (child == 0) {
                prctl(PR_SET_PDEATHSIG, SIGKILL);
                while (true)
                    pause();
            }
            m_children.push_back(child);
        }
    }
    ~Crowd()
    {
        for (const pid_t child : m_children) {
            kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
        }
    }
    Crowd(const Crowd &) = delete;
    Crowd &operator=(const Crowd &) = delete;

private:
    std::vector<pid_t> m_children;
};

} // namespace

int main(int argumentCount, char **arguments)
{
    const int processes = argumentCount > 1 ? std::atoi(arguments[1]) : 2000;
    const int rounds = argumentCount > 2 ? std::atoi(arguments[2]) : 20;
    const std::size_t descriptors =
        argumentCount > 3 ? static_cast<std::size_t>(std::atoi(arguments[3])) : descriptorBudget();
    const Crowd crowd(processes);

    const auto table = std::make_shared<ProcessTable>(
        ProcessTable::Sources{"/proc", steadySeconds, descriptors},
        ProgramFinder("/proc",
                      DesktopApplications({"/usr/share/applications"}, {"", "/root", {"/usr/bin"}})));
    LinuxProcessSurveyor surveyor({"/proc", table, steadySeconds, tcpSocketBytes, {}});
    const auto refresh = [&surveyor] {
        const auto survey = surveyor.begin();
        const auto busiest = survey->busiest();
        const auto largest = survey->largest();
        const auto weights = survey->weights();
        if (survey->power().empty() || survey->network().empty())
            return;
    };

    const double firstListing = cost(RUSAGE_SELF, 1, [&table] { table->list(); });
    const double listing = cost(RUSAGE_SELF, rounds, [&table] { table->list(); });
    const double refreshing = cost(RUSAGE_SELF, 3, refresh);
    const double ps = toolCost("ps -Ao pid,ppid,pcpu,pmem,rss,comm >/dev/null", rounds);
    const double top = toolCost("top -b -n 2 -d 1 >/dev/null", 2);

    std::printf("processes made     %8d\n", processes);
    std::printf("first listing      %8.2f ms\n", firstListing);
    std::printf("listing            %8.2f ms\n", listing);
    std::printf("ps                 %8.2f ms   listing / ps          %.3f\n", ps, listing / ps);
    std::printf("refresh            %8.2f ms\n", refreshing);
    std::printf("5 ps + top         %8.2f ms   refresh / (5 ps + top) %.3f\n", 5 * ps + top,
                refreshing / (5 * ps + top));
    return 0;
}
