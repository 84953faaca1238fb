#include "platform/linux/LinuxBootClock.h"

#include "platform/linux/KernelFile.h"
#include "platform/linux/ProcessStat.h"

#include <algorithm>

namespace swabby {

std::optional<double> bootTimeFrom(std::string_view statText)
{
    while (auto line = nextLine(statText)) {
        if (nextWord(*line) != "btime")
            continue;
        const auto seconds = integerOf<std::int64_t>(nextWord(*line));
        return seconds ? std::optional(static_cast<double>(*seconds)) : std::nullopt;
    }
    return std::nullopt;
}

double uptimeFrom(std::string_view uptimeText)
{
    return std::max(numberOf(nextWord(uptimeText)).value_or(0), 0.0);
}

LinuxBootClock::LinuxBootClock(std::string procRoot)
    : m_procRoot(std::move(procRoot)), m_bootEpoch(bootTimeFrom(fileText(m_procRoot + "/stat")))
{
}

std::optional<double> LinuxBootClock::bootEpoch()
{
    return m_bootEpoch;
}

std::optional<double> LinuxBootClock::startEpoch(std::int32_t pid)
{
    const std::string text = fileText(m_procRoot + '/' + std::to_string(pid) + "/stat");
    const auto stat = processStatFrom(text);
    if (!stat || !m_bootEpoch)
        return std::nullopt;
    return *m_bootEpoch + static_cast<double>(stat->startTicks) / ticksPerSecond();
}

} // namespace swabby
