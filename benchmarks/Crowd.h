#pragma once

#include <sys/types.h>
#include <vector>

namespace swabby {

/// Processes that sleep for as long as this object lives, so that the machine is as full as a benchmark says.
class Crowd {
public:
    /// Fills the machine up to about that many processes.
    explicit Crowd(int processes);
    ~Crowd();
    Crowd(const Crowd &) = delete;
    Crowd &operator=(const Crowd &) = delete;

    static int runningProcesses();

private:
    std::vector<pid_t> m_members;
};

} // namespace swabby
