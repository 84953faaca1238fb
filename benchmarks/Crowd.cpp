#include "benchmarks/Crowd.h"

#include <algorithm>
#include <cctype>
#include <csignal>
#include <filesystem>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace swabby {

Crowd::Crowd(int processes)
{
    for (int missing = processes - runningProcesses(); missing > 0; --missing) {
        const pid_t child = ::fork();
        if (child < 0)
            return;
        if (child == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            for (;;)
                ::pause();
        }
        m_members.push_back(child);
    }
}

Crowd::~Crowd()
{
    for (const pid_t member : m_members)
        ::kill(member, SIGKILL);
    for (const pid_t member : m_members)
        ::waitpid(member, nullptr, 0);
}

int Crowd::runningProcesses()
{
    int count = 0;
    for (const auto &entry : std::filesystem::directory_iterator("/proc"))
        count += std::isdigit(static_cast<unsigned char>(entry.path().filename().native().front())) != 0;
    return count;
}

} // namespace swabby
