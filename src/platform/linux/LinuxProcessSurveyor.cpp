#include "platform/linux/LinuxProcessSurveyor.h"

#include "platform/Utf8.h"
#include "platform/linux/EnergyMeter.h"
#include "platform/linux/KernelFile.h"
#include "platform/linux/MemoryUse.h"
#include "platform/linux/ProcessOwner.h"
#include "platform/linux/SessionHolders.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>

namespace swabby {

namespace {

constexpr std::size_t longestList = 50;
constexpr double measuredSeconds = 1.0;

class LinuxProcessSurvey final : public ProcessSurvey {
public:
    LinuxProcessSurvey(const LinuxProcessSurveyor::Sources &sources, SocketOwners &owners,
                       TrafficRecord &traffic);

    std::optional<std::vector<ProcessRow>> busiest() override;
    std::optional<std::vector<ProcessRow>> largest() override;
    std::vector<ProcessRow> matching(const std::unordered_set<std::int32_t> &pids) override;
    std::vector<ProcessRow> all() override;
    std::vector<ProcessWeight> weights() override;
    std::optional<std::uint64_t> memoryTogether(std::span<const std::int32_t> pids) override;
    std::vector<PowerRow> power() override;
    std::vector<NetworkRow> network() override;

private:
    template <typename Before>
    std::vector<ProcessRow> first(Before before) const;
    ProcessRow processRow(const TableRow &row) const;
    const std::optional<Listing> &listing();
    void finishMeasuring();
    std::vector<NetworkRow> traffic(const std::vector<SocketBytes> &after) const;
    std::vector<std::int32_t> pidsBusiestFirst() const;

    const LinuxProcessSurveyor::Sources &m_sources;
    SocketOwners &m_owners;
    TrafficRecord &m_traffic;
    std::optional<Listing> m_listing;
    std::unordered_set<std::int32_t> m_sessionHolders;

    double m_begun = 0;
    std::vector<std::shared_ptr<const Program>> m_measuredPrograms;
    std::vector<MeasuredProcess> m_measured;
    std::vector<ProcessRun> m_runsBefore;

    bool m_isMeasured = false;
    std::vector<PowerRow> m_power;
    std::vector<NetworkRow> m_network;
};

LinuxProcessSurvey::LinuxProcessSurvey(const LinuxProcessSurveyor::Sources &sources, SocketOwners &owners,
                                       TrafficRecord &traffic)
    : m_sources(sources), m_owners(owners), m_traffic(traffic), m_listing(sources.table->list())
{
    if (m_listing) {
        for (const TableRow &row : m_listing->rows) {
            if (!row.hasRun)
                continue;
            m_measuredPrograms.push_back(row.program);
            m_measured.push_back({row.pid, row.threads});
        }
    }
    m_begun = m_sources.steadySeconds();
    m_runsBefore = readRuns(m_sources.procRoot, m_measured);
    if (m_traffic.isEmpty())
        if (const auto sockets = m_sources.socketBytes())
            m_traffic.exchange(m_begun, *sockets);
    // Here the second that is measured goes on meanwhile.
    m_sessionHolders = m_sources.sessionHolders();
}

/// With shares of the processor over some time, which the first listing has to wait for.
const std::optional<Listing> &LinuxProcessSurvey::listing()
{
    if (m_listing && m_listing->isFirst)
        finishMeasuring();
    return m_listing;
}

std::optional<std::vector<ProcessRow>> LinuxProcessSurvey::busiest()
{
    if (!listing())
        return std::nullopt;
    return first(
        [](const TableRow *left, const TableRow *right) { return left->cpuPercent > right->cpuPercent; });
}

std::optional<std::vector<ProcessRow>> LinuxProcessSurvey::largest()
{
    if (!listing())
        return std::nullopt;
    return first([](const TableRow *left, const TableRow *right) {
        return left->residentBytes > right->residentBytes;
    });
}

std::vector<ProcessRow> LinuxProcessSurvey::matching(const std::unordered_set<std::int32_t> &pids)
{
    std::vector<ProcessRow> rows;
    if (pids.empty() || !listing())
        return rows;
    for (const TableRow &row : m_listing->rows) {
        if (pids.contains(row.pid))
            rows.push_back(processRow(row));
    }
    return rows;
}

std::vector<ProcessRow> LinuxProcessSurvey::all()
{
    std::vector<ProcessRow> rows;
    if (!listing())
        return rows;
    rows.reserve(m_listing->rows.size());
    for (const TableRow &row : m_listing->rows)
        rows.push_back(processRow(row));
    return rows;
}

std::vector<ProcessWeight> LinuxProcessSurvey::weights()
{
    std::vector<ProcessWeight> weights;
    if (!listing())
        return weights;
    weights.reserve(m_listing->rows.size());
    for (const TableRow &row : m_listing->rows)
        weights.push_back(
            {textOf(row.program->name), row.cpuPercent, row.residentBytes, row.pid, row.program->isBrowser});
    return weights;
}

std::optional<std::uint64_t> LinuxProcessSurvey::memoryTogether(std::span<const std::int32_t> pids)
{
    std::vector<MemoryUse> uses;
    if (!listing())
        return std::nullopt;
    for (const std::int32_t pid : pids) {
        const auto row = std::ranges::lower_bound(m_listing->rows, pid, {}, &TableRow::pid);
        auto use = memoryUseFrom(fileText(m_sources.procRoot + '/' + std::to_string(pid) + "/status"));
        if (row == m_listing->rows.end() || row->pid != pid || !use)
            continue; // has ended meanwhile
        use->pid = pid;
        use->parentPid = row->parentPid;
        use->isForked = row->isForked;
        uses.push_back(*use);
    }
    return uses.empty() ? std::nullopt : std::optional(swabby::memoryTogether(uses) * 1024);
}

std::vector<PowerRow> LinuxProcessSurvey::power()
{
    finishMeasuring();
    return m_power;
}

std::vector<NetworkRow> LinuxProcessSurvey::network()
{
    finishMeasuring();
    return m_network;
}

template <typename Before>
std::vector<ProcessRow> LinuxProcessSurvey::first(Before before) const
{
    std::vector<const TableRow *> sorted;
    sorted.reserve(m_listing->rows.size());
    for (const TableRow &row : m_listing->rows)
        sorted.push_back(&row);
    const auto end = sorted.begin() + std::min(std::ssize(sorted), std::ptrdiff_t{longestList});
    std::partial_sort(sorted.begin(), end, sorted.end(), before);

    std::vector<ProcessRow> rows;
    std::transform(sorted.begin(), end, std::back_inserter(rows),
                   [this](const TableRow *row) { return processRow(*row); });
    return rows;
}

ProcessRow LinuxProcessSurvey::processRow(const TableRow &row) const
{
    ProcessRow result;
    result.pid = row.pid;
    result.parentPid = row.parentPid;
    result.cpuPercent = row.cpuPercent;
    if (m_listing->memoryBytes > 0)
        result.memPercent =
            100.0 * static_cast<double>(row.residentBytes) / static_cast<double>(m_listing->memoryBytes);
    result.residentBytes = row.residentBytes;
    result.path = textOf(row.program->path);
    result.name = textOf(row.program->name);
    result.title = row.isKernelThread ? QStringLiteral("Linux kernel") : textOf(row.program->title);
    result.isApp = row.program->isApp;
    result.holdsSession = m_sessionHolders.contains(row.pid) || holdsSessions(row.program->path) ||
                          holdsSessions(row.program->script);
    result.owner = row.isKernelThread ? ownerOfSystem() : processOwner(m_sources.procRoot, row.pid);
    return result;
}

void LinuxProcessSurvey::finishMeasuring()
{
    if (std::exchange(m_isMeasured, true))
        return;
    const double left = measuredSeconds - (m_sources.steadySeconds() - m_begun);
    if (left > 0 && !m_sources.stop.waitFor(std::chrono::milliseconds(std::llround(left * 1000))))
        return;
    const double seconds = m_sources.steadySeconds() - m_begun;
    if (seconds <= 0)
        return;
    if (m_listing && m_listing->isFirst)
        m_listing = m_sources.table->list();
    const std::vector<ProcessRun> runs = readRuns(m_sources.procRoot, m_measured);
    for (std::size_t index = 0; index < runs.size(); ++index) {
        if (!runs[index].empty())
            m_power.push_back({m_measured[index].pid, textOf(m_measuredPrograms[index]->name),
                               energyImpact(m_runsBefore[index], runs[index], seconds)});
    }
    if (const auto sockets = m_sources.socketBytes())
        m_network = traffic(*sockets);
}

std::vector<NetworkRow> LinuxProcessSurvey::traffic(const std::vector<SocketBytes> &after) const
{
    const double now = m_sources.steadySeconds();
    const auto before = m_traffic.exchange(now, after);
    if (!before || now <= before->seconds)
        return {};
    std::unordered_set<std::uint32_t> open;
    std::vector<std::uint32_t> inodes;
    std::vector<SocketBytes> moved;
    for (SocketBytes socket : after) {
        open.insert(socket.inode);
        const auto known = before->sockets.find(socket.cookie);
        if (known != before->sockets.end()) {
            socket.received -= std::min(known->second.received, socket.received);
            socket.sent -= std::min(known->second.sent, socket.sent);
        }
        // A closed socket that is still sending has no owner, and other people's are not shown to a user.
        const bool canBeFound = socket.inode != 0 && (::geteuid() == 0 || socket.userId == ::getuid());
        if (canBeFound && (socket.received > 0 || socket.sent > 0)) {
            moved.push_back(socket);
            inodes.push_back(socket.inode);
        }
    }
    m_owners.forgetExcept(open);

    const auto owners = m_owners.find(inodes, pidsBusiestFirst());
    const auto perSecond = [&](std::uint64_t bytes) {
        return std::llround(static_cast<double>(bytes) / (now - before->seconds));
    };
    std::vector<NetworkRow> rows;
    for (const SocketBytes &socket : moved) {
        if (const auto owner = owners.find(socket.inode); owner != owners.end())
            rows.push_back({owner->second, perSecond(socket.received), perSecond(socket.sent)});
    }
    return rows;
}

/// Whoever moves bytes has most likely used the processor.
std::vector<std::int32_t> LinuxProcessSurvey::pidsBusiestFirst() const
{
    std::vector<std::int32_t> pids;
    if (!m_listing)
        return pids;
    std::vector<const TableRow *> sorted;
    for (const TableRow &row : m_listing->rows)
        sorted.push_back(&row);
    std::stable_sort(sorted.begin(), sorted.end(), [](const TableRow *left, const TableRow *right) {
        return left->cpuPercent > right->cpuPercent;
    });
    for (const TableRow *row : sorted)
        pids.push_back(row->pid);
    return pids;
}

} // namespace

LinuxProcessSurveyor::LinuxProcessSurveyor(Sources sources)
    : m_sources(std::move(sources)), m_owners(m_sources.procRoot)
{
}

std::unique_ptr<ProcessSurvey> LinuxProcessSurveyor::begin()
{
    return std::make_unique<LinuxProcessSurvey>(m_sources, m_owners, m_traffic);
}

} // namespace swabby
