#include "engine/Samplers.h"

#include "engine/SaturatedBytes.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <array>

namespace swabby {
namespace {

struct Browser {
    const char *pattern; ///< in lower case
    const char *name;
};

constexpr std::array browsers = {Browser{"google chrome", "Google Chrome"}, Browser{"safari", "Safari"},
                                 Browser{"firefox", "Firefox"}, Browser{"microsoft edge", "Microsoft Edge"},
                                 Browser{"brave browser", "Brave Browser"}};

ProcessSample sampleOf(const ProcessRow &row)
{
    return {.pid = row.pid,
            .name = row.name,
            .path = row.path,
            .cpuPercent = row.cpuPercent,
            .memPercent = row.memPercent,
            .rssBytes = row.residentBytes,
            .isApp = row.isApp,
            .holdsSession = row.holdsSession,
            .title = row.title,
            .owner = row.owner};
}

/// Adds what is not among the samples yet and not excluded.
void add(const std::vector<ProcessRow> &rows, std::int32_t ownPid, QList<ProcessSample> &samples,
         std::unordered_set<std::int32_t> &seen)
{
    for (const ProcessRow &row : rows)
        if (!ProcessSampler::isExcluded(row, ownPid) && seen.insert(row.pid).second)
            samples.append(sampleOf(row));
}

void sortMostFirst(QList<ProcessSample> &samples)
{
    std::stable_sort(samples.begin(), samples.end(), [](const ProcessSample &a, const ProcessSample &b) {
        return a.cpuPercent + a.memPercent > b.cpuPercent + b.memPercent;
    });
}

} // namespace

bool ProcessSampler::isExcluded(const ProcessRow &row, std::int32_t ownPid)
{
    return row.pid == 0 || row.pid == ownPid || row.parentPid == ownPid ||
           row.name.compare(QLatin1String("swabby"), Qt::CaseInsensitive) == 0 ||
           row.path.contains(QLatin1String("swabby.app"), Qt::CaseInsensitive) ||
           row.path.contains(QLatin1String("/swabby"), Qt::CaseInsensitive);
}

QList<ProcessSample> ProcessSampler::topProcesses(ProcessSurvey &survey, int limit, std::int32_t ownPid)
{
    const auto busiest = survey.busiest();
    if (!busiest)
        return {};
    const auto largest = survey.largest();
    if (!largest)
        return {};

    QList<ProcessSample> samples;
    std::unordered_set<std::int32_t> seen;
    for (const auto *listing : {&*busiest, &*largest})
        add(*listing, ownPid, samples, seen);
    sortMostFirst(samples);
    return samples.mid(0, limit);
}

QList<ProcessSample> ProcessSampler::everything(ProcessSurvey &survey, std::int32_t ownPid)
{
    QList<ProcessSample> samples;
    std::unordered_set<std::int32_t> seen;
    add(survey.all(), ownPid, samples, seen);
    sortMostFirst(samples);
    return samples;
}

std::map<std::int32_t, ProcessSample>
ProcessSampler::processes(ProcessSurvey &survey, const std::unordered_set<std::int32_t> &matching,
                          std::int32_t ownPid)
{
    std::map<std::int32_t, ProcessSample> samples;
    if (matching.empty())
        return samples;
    for (const ProcessRow &row : survey.matching(matching))
        if (!isExcluded(row, ownPid))
            samples.emplace(row.pid, sampleOf(row));
    return samples;
}

std::optional<QString> BrowserRollup::groupName(const QString &processName)
{
    for (const Browser &browser : browsers)
        if (processName.contains(QLatin1String(browser.pattern), Qt::CaseInsensitive))
            return QString::fromLatin1(browser.name);
    return std::nullopt;
}

QList<BrowserRollupEntry> BrowserRollup::sample(ProcessSurvey &survey)
{
    QList<BrowserRollupEntry> entries;
    std::map<QString, std::vector<std::int32_t>> pids;
    for (const ProcessWeight &weight : survey.weights()) {
        std::optional<QString> group = groupName(weight.name);
        if (!group && weight.isBrowser)
            group = weight.name;
        if (!group)
            continue;
        pids[*group].push_back(weight.pid);
        auto entry = std::find_if(entries.begin(), entries.end(),
                                  [&](const auto &known) { return known.browserName == *group; });
        if (entry == entries.end())
            entry = entries.insert(entries.end(), {.browserName = *group});
        ++entry->processCount;
        entry->totalMemBytes += weight.residentBytes;
        entry->totalCPUPercent += weight.cpuPercent;
    }
    for (BrowserRollupEntry &entry : entries)
        if (const auto together = survey.memoryTogether(pids[entry.browserName]))
            entry.totalMemBytes = *together;
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto &a, const auto &b) { return a.totalMemBytes > b.totalMemBytes; });
    return entries;
}

std::unordered_map<std::int32_t, double> PowerSampler::sample(ProcessSurvey &survey, std::int32_t ownPid)
{
    std::unordered_map<std::int32_t, double> power;
    for (const PowerRow &row : survey.power())
        if (row.pid != ownPid && row.command.compare(QLatin1String("swabby"), Qt::CaseInsensitive) != 0)
            power.insert_or_assign(row.pid, row.power);
    return power;
}

std::unordered_map<std::int32_t, std::int64_t> NetworkSampler::sample(ProcessSurvey &survey)
{
    std::unordered_map<std::int32_t, std::int64_t> traffic;
    for (const NetworkRow &row : survey.network()) {
        std::int64_t &total = traffic[row.pid];
        total = saturatedSum(total, saturatedSum(row.bytesIn, row.bytesOut));
    }
    return traffic;
}

} // namespace swabby
