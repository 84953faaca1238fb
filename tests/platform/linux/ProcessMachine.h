#pragma once

#include "StandIn.h"
#include "platform/linux/LinuxProcessSurveyor.h"

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace swabby {

/// Another process that goes on with this test's program, until the test ends.
struct ForkedChild {
    ForkedChild()
    {
        if (pid != 0)
            return;
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        while (true)
            ::pause();
    }
    const pid_t pid = ::fork();
};

/// A /proc, a stand-in unless it is told otherwise, whose clock only moves when told.
class ProcessMachine {
public:
    using SocketBytesReader = std::function<std::optional<std::vector<SocketBytes>>()>;

    explicit ProcessMachine(std::size_t descriptors = 100, const std::string &realRoot = {})
        : root(realRoot.empty() ? proc.path() : realRoot),
          table(
              std::make_shared<ProcessTable>(ProcessTable::Sources{root, [this] { return now; }, descriptors},
                                             ProgramFinder(root, DesktopApplications({}, {}))))
    {
        proc.write("meminfo", "MemTotal: 4096 kB\nMemAvailable: 1 kB\n");
        setTime(1000);
    }
    ProcessMachine(const ProcessMachine &) = delete;
    ProcessMachine &operator=(const ProcessMachine &) = delete;

    void setTime(double seconds)
    {
        now = seconds;
        proc.write("uptime", std::to_string(seconds) + " 0.00\n");
    }
    LinuxProcessSurveyor surveyor(
        const SocketBytesReader &sockets = [] { return std::nullopt; }, const StopToken &stop = {})
    {
        return LinuxProcessSurveyor({root, table, [this] { return now; }, sockets, stop});
    }

    const TableRow *row(std::int32_t pid)
    {
        listing = table->list();
        const auto found = std::find_if(listing->rows.begin(), listing->rows.end(),
                                        [pid](const TableRow &row) { return row.pid == pid; });
        return found == listing->rows.end() ? nullptr : &*found;
    }
    StandIn proc;
    const std::string root;
    double now = 0;
    const std::shared_ptr<ProcessTable> table;
    std::optional<Listing> listing;
};

} // namespace swabby
