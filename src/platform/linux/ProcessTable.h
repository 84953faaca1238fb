#pragma once

#include "platform/linux/KernelFile.h"
#include "platform/linux/ProgramFinder.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace swabby {

/// One process of a listing.
struct TableRow {
    std::int32_t pid = 0;
    std::int32_t parentPid = 0;
    std::int32_t threads = 0;
    bool isForked = false; ///< as in ProcessStat
    bool isKernelThread = false;
    bool hasRun = false;   ///< had the processor since the previous listing, or ever at the first
    double cpuPercent = 0; ///< of one processor
    std::uint64_t residentBytes = 0;
    std::shared_ptr<const Program> program; ///< never null
};

/// All processes of the machine at one moment, in the order of their pids.
struct Listing {
    std::uint64_t memoryBytes = 0; ///< of the machine
    bool isFirst = false;          ///< there was none to compare with: every share is over a life
    std::vector<TableRow> rows;
};

/// The running processes, listed from /proc at every refresh. Keeps what the next listing needs: the stat
/// files open as far as the budget of descriptors goes (an open one costs a few KiB in the kernel and half
/// the time of opening it again), what each process runs, and its processor time at the previous listing.
/// Safe to call from several threads.
class ProcessTable {
public:
    struct Sources {
        std::string procRoot;
        std::function<double()> steadySeconds; ///< a clock that is never set
        std::size_t descriptorBudget = 0;      ///< stat files kept open
    };

    ProcessTable(Sources sources, ProgramFinder finder);

    /// Lists every process. A share of the processor is that since the previous listing; for a process not
    /// listed before it is that over its life. A listing within half a second of the previous one still
    /// compares with the one before: so short a time says nothing. No value when /proc cannot be read.
    std::optional<Listing> list();

    /// The lowest pid running this program file or script, or one under the folder when that is not empty, as
    /// of the last listing (which is made first when there was none); 0 when none does.
    std::int32_t pidRunning(const std::string &program, const std::string &folder);

private:
    struct Record {
        std::int32_t pid = 0;
        Descriptor stat;
        std::string command;
        std::uint64_t programStamp = 0;
        std::uint64_t startTicks = 0;
        std::optional<std::uint64_t> newerTicks; ///< processor time at the newer baseline
        std::optional<std::uint64_t> olderTicks;
        std::shared_ptr<const Program> program;
    };
    /// What one listing compares with.
    struct Interval {
        bool isBaseline = false; ///< this listing is late enough to be a baseline itself
        double seconds = 0;      ///< since the baseline in use; 0 without one
        double sinceBoot = 0;
    };

    std::optional<Listing> listLocked();
    Interval beginInterval();
    std::vector<Record> takeRecords(const std::vector<std::int32_t> &pids);
    std::string_view readStat(Record &record, char *buffer, std::size_t size) const;
    void finish(Record &record, TableRow &row, const ProcessStat &stat, const Interval &interval) const;

    const Sources m_sources;
    ProgramFinder m_finder;
    const std::uint64_t m_pageSize;
    std::mutex m_mutex;
    std::vector<Record> m_records; ///< in the order of their pids
    std::optional<double> m_newerTime;
    std::optional<double> m_olderTime;
};

/// Descriptors a process table may keep: half of what this program may have open, and never more than
/// a few thousand.
std::size_t descriptorBudget();

} // namespace swabby
