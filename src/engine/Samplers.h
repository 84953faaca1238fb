#pragma once

#include "engine/BrowserRollupEntry.h"
#include "engine/ProcessSample.h"
#include "platform/ProcessSurvey.h"

#include <QtCore/QList>

#include <map>
#include <unordered_map>

namespace swabby {

namespace ProcessSampler {

/// Swabby itself, by its process id, its name or its place, its children and the kernel never appear in a
/// list.
bool isExcluded(const ProcessRow &row, std::int32_t ownPid);

/// The union of the busiest and the largest, by load and memory together, at most limit. Empty when the
/// survey gives no listing. Blocks.
QList<ProcessSample> topProcesses(ProcessSurvey &survey, int limit, std::int32_t ownPid);

/// Everything that runs and is not excluded, by load and memory together, the most first. Blocks.
QList<ProcessSample> everything(ProcessSurvey &survey, std::int32_t ownPid);

/// Those of the pids that run and are not excluded. Asks nothing for no pids. Blocks.
std::map<std::int32_t, ProcessSample>
processes(ProcessSurvey &survey, const std::unordered_set<std::int32_t> &matching, std::int32_t ownPid);

} // namespace ProcessSampler

namespace BrowserRollup {

/// The browser a process name belongs to, if any.
std::optional<QString> groupName(const QString &processName);

/// One line a browser, largest memory first. Blocks.
QList<BrowserRollupEntry> sample(ProcessSurvey &survey);

} // namespace BrowserRollup

namespace PowerSampler {

/// Power by pid, without Swabby's own. Blocks for about a second or two.
std::unordered_map<std::int32_t, double> sample(ProcessSurvey &survey, std::int32_t ownPid);

} // namespace PowerSampler

namespace NetworkSampler {

/// Bytes per second by pid, in and out together. Blocks for about a second or two.
std::unordered_map<std::int32_t, std::int64_t> sample(ProcessSurvey &survey);

} // namespace NetworkSampler

} // namespace swabby
