#include "platform/macparts/MacProcessControl.h"

#include "platform/TextScan.h"
#include "platform/mactools/MacBootClock.h"

#include <QtCore/QDeadlineTimer>

#include <algorithm>
#include <csignal>

namespace swabby {

std::optional<std::uint64_t> parseLivingStart(std::string_view text)
{
    const std::string_view line = trimmed(text);
    const std::size_t blank = line.find(' ');
    if (blank == std::string_view::npos || line.starts_with('Z'))
        return std::nullopt;
    const auto start = parseStartTime(line.substr(blank));
    return start && *start > 0 ? std::optional(static_cast<std::uint64_t>(*start)) : std::nullopt;
}

std::optional<ProcessIdentity> MacProcessControl::identify(std::int32_t pid)
{
    // Anything else stands for a group of processes.
    if (pid <= 0)
        return std::nullopt;
    const auto text = textAbout(pid);
    const auto started = text ? parseLivingStart(*text) : std::nullopt;
    return started ? std::optional(ProcessIdentity{.pid = pid, .started = *started}) : std::nullopt;
}

bool MacProcessControl::signal(const ProcessIdentity &process, QuitSignal signal)
{
    return identify(process.pid) == process && m_send(process.pid, static_cast<int>(signal));
}

std::optional<bool> MacProcessControl::endsWithin(std::chrono::milliseconds time,
                                                  const ProcessIdentity &process, const StopToken &stop)
{
    using std::chrono::milliseconds;
    const QDeadlineTimer end(time);
    for (milliseconds pause(50);; pause = std::min(pause * 2, milliseconds(500))) {
        const auto text = textAbout(process.pid);
        if (!text)
            return std::nullopt;
        // What is stopped may have cut the text short.
        if (parseLivingStart(*text) != process.started)
            return stop.stopRequested() ? std::nullopt : std::optional(true);
        if (end.hasExpired() || !stop.waitFor(std::min(pause, milliseconds(end.remainingTime()))))
            return false;
    }
}

std::optional<std::string> MacProcessControl::textAbout(std::int32_t pid)
{
    // A Mac's ps takes everything after the first sign for a heading, so each column comes by itself.
    return m_shell.run("/bin/ps", {"-o", "stat=", "-o", "lstart=", "-p", std::to_string(pid)},
                       ToolOutput::standardOutput);
}

bool MacProcessControl::sendSignal(std::int32_t pid, int signal)
{
    return ::kill(pid, signal) == 0;
}

} // namespace swabby
