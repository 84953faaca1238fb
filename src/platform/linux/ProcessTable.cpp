#include "platform/linux/ProcessTable.h"

#include "platform/linux/LinuxBootClock.h"
#include "platform/linux/LinuxKernelCounters.h"

#include <dirent.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace swabby {

namespace {

/// Shorter times than this make a share of single ticks, which jumps.
constexpr double shortestInterval = 0.5;

std::vector<std::int32_t> runningPids(const std::string &procRoot)
{
    std::vector<std::int32_t> pids;
    DIR *folder = ::opendir(procRoot.c_str());
    if (!folder)
        return pids;
    while (const dirent *entry = ::readdir(folder)) {
        if (const auto pid = integerOf<std::int32_t>(entry->d_name); pid && *pid > 0)
            pids.push_back(*pid);
    }
    ::closedir(folder);
    std::sort(pids.begin(), pids.end());
    return pids;
}

} // namespace

ProcessTable::ProcessTable(Sources sources, ProgramFinder finder)
    : m_sources(std::move(sources)),
      m_finder(std::move(finder)),
      m_pageSize(static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE)))
{
}

std::optional<Listing> ProcessTable::list()
{
    const std::lock_guard lock(m_mutex);
    return listLocked();
}

std::int32_t ProcessTable::pidRunning(const std::string &program, const std::string &folder)
{
    const std::lock_guard lock(m_mutex);
    if (m_records.empty())
        listLocked();
    const auto found = std::find_if(m_records.begin(), m_records.end(), [&](const Record &record) {
        const auto isIt = [&](const std::string &path) {
            const bool isInside = !folder.empty() && path.starts_with(folder) && path[folder.size()] == '/';
            return isInside || path == program;
        };
        return isIt(record.program->path) || isIt(record.program->script);
    });
    return found == m_records.end() ? 0 : found->pid;
}

std::optional<Listing> ProcessTable::listLocked()
{
    const std::vector<std::int32_t> pids = runningPids(m_sources.procRoot);
    if (pids.empty())
        return std::nullopt;
    const Interval interval = beginInterval();
    const bool applicationsChanged = m_finder.refresh();
    std::vector<Record> candidates = takeRecords(pids);

    Listing listing;
    const auto memory = memoryInfoFrom(fileText(m_sources.procRoot + "/meminfo"));
    listing.memoryBytes = memory ? memory->total * 1024 : 0;
    listing.isFirst = interval.seconds <= 0;
    listing.rows.reserve(candidates.size());
    m_records.reserve(candidates.size());

    std::size_t descriptors = 0;
    std::array<char, 2048> buffer;
    for (Record &record : candidates) {
        if (applicationsChanged)
            record.program.reset();
        const auto stat = processStatFrom(readStat(record, buffer.data(), buffer.size()));
        if (!stat || stat->hasEnded)
            continue;
        if (record.stat.isOpen() && ++descriptors > m_sources.descriptorBudget) {
            record.stat.reset();
            --descriptors;
        }
        TableRow row;
        finish(record, row, *stat, interval);
        listing.rows.push_back(std::move(row));
        m_records.push_back(std::move(record));
    }
    return listing;
}

ProcessTable::Interval ProcessTable::beginInterval()
{
    const double now = m_sources.steadySeconds();
    Interval interval;
    interval.isBaseline = !m_newerTime || now - *m_newerTime >= shortestInterval;
    const std::optional<double> &baseline = interval.isBaseline ? m_newerTime : m_olderTime;
    interval.seconds = baseline ? now - *baseline : 0;
    interval.sinceBoot = uptimeFrom(fileText(m_sources.procRoot + "/uptime"));
    if (interval.isBaseline)
        m_olderTime = std::exchange(m_newerTime, now);
    return interval;
}

/// One record for each pid, the known ones taken out of the table, which is empty afterwards.
std::vector<ProcessTable::Record> ProcessTable::takeRecords(const std::vector<std::int32_t> &pids)
{
    std::vector<Record> candidates;
    candidates.reserve(pids.size());
    auto known = m_records.begin();
    for (const std::int32_t pid : pids) {
        while (known != m_records.end() && known->pid < pid)
            ++known;
        if (known != m_records.end() && known->pid == pid)
            candidates.push_back(std::move(*known++));
        else
            candidates.emplace_back().pid = pid;
    }
    m_records.clear();
    return candidates;
}

std::string_view ProcessTable::readStat(Record &record, char *buffer, std::size_t size) const
{
    // A descriptor of a process that has ended reads nothing, even when its pid is used again.
    if (record.stat.isOpen()) {
        const std::string_view line = readFromStart(record.stat.number(), buffer, size);
        if (!line.empty())
            return line;
    }
    record.stat = openForReading(m_sources.procRoot + '/' + std::to_string(record.pid) + "/stat");
    return record.stat.isOpen() ? readFromStart(record.stat.number(), buffer, size) : std::string_view();
}

void ProcessTable::finish(Record &record, TableRow &row, const ProcessStat &stat,
                          const Interval &interval) const
{
    if (record.startTicks != stat.startTicks) { // another process under the same pid
        record.startTicks = stat.startTicks;
        record.newerTicks.reset();
        record.olderTicks.reset();
        record.program.reset();
    }
    if (!record.program || record.programStamp != stat.programStamp || record.command != stat.command) {
        record.programStamp = stat.programStamp;
        record.command = stat.command;
        // Parents come earlier, as pids are given out upwards.
        const auto parent =
            std::lower_bound(m_records.begin(), m_records.end(), stat.parentPid,
                             [](const Record &left, std::int32_t pid) { return left.pid < pid; });
        const bool isKnown = parent != m_records.end() && parent->pid == stat.parentPid;
        record.program = m_finder.find(record.pid, stat, isKnown ? parent->program.get() : nullptr);
    }

    const std::optional<std::uint64_t> &baseline =
        interval.isBaseline ? record.newerTicks : record.olderTicks;
    const std::uint64_t ticks = stat.runTicks - std::min(baseline.value_or(0), stat.runTicks);
    const double life = interval.sinceBoot - static_cast<double>(stat.startTicks) / ticksPerSecond();
    const double seconds = std::max(baseline ? interval.seconds : life, shortestInterval);

    row.pid = record.pid;
    row.parentPid = stat.parentPid;
    row.threads = stat.threads;
    row.isForked = stat.isForked;
    row.isKernelThread = stat.isKernelThread;
    row.hasRun = ticks > 0;
    row.cpuPercent = 100.0 * static_cast<double>(ticks) / ticksPerSecond() / seconds;
    row.residentBytes = stat.residentPages * m_pageSize;
    row.program = record.program;
    if (interval.isBaseline)
        record.olderTicks = std::exchange(record.newerTicks, stat.runTicks);
}

std::size_t descriptorBudget()
{
    constexpr std::size_t largest = 4096;
    rlimit limit = {};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return 0;
    return std::min<std::size_t>(limit.rlim_cur / 2, largest);
}

} // namespace swabby
