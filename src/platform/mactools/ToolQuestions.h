#pragma once

#include "platform/Shell.h"

namespace swabby {

/// What a Mac's tool is asked.
struct ToolQuestion {
    std::string executable;
    std::vector<std::string> arguments;

    std::optional<std::string> ask(Shell &shell, ToolOutput output = ToolOutput::bothStreams) const
    {
        return shell.run(executable, arguments, output);
    }
};

namespace ToolQuestions {

inline ToolQuestion processes()
{
    return {"/bin/ps", {"-Ao", "pid,ppid,pcpu,pmem,rss,comm"}};
}
inline ToolQuestion busiest()
{
    return {"/bin/ps", {"-Ao", "pid,ppid,pcpu,pmem,rss,comm", "-r"}};
}
inline ToolQuestion largest()
{
    return {"/bin/ps", {"-Ao", "pid,ppid,pcpu,pmem,rss,comm", "-m"}};
}
inline ToolQuestion weights()
{
    return {"/bin/ps", {"-Ao", "pcpu,rss,comm"}};
}
inline ToolQuestion power()
{
    return {"/usr/bin/top", {"-l", "2", "-s", "1", "-stats", "pid,command,power", "-n", "300"}};
}
inline ToolQuestion traffic()
{
    return {"/usr/bin/nettop", {"-P", "-x", "-d", "-L", "2", "-s", "1", "-J", "bytes_in,bytes_out"}};
}
inline ToolQuestion bootTime()
{
    return {"/usr/sbin/sysctl", {"-n", "kern.boottime"}};
}
inline ToolQuestion battery()
{
    return {"/usr/sbin/system_profiler", {"SPPowerDataType"}};
}
inline ToolQuestion loginItems()
{
    return {"/usr/bin/osascript",
            {"-e", "tell application \"System Events\" to get the name of every login item"}};
}

/// When that process started.
inline ToolQuestion startTime(std::int32_t pid)
{
    return {"/bin/ps", {"-o", "lstart=", "-p", std::to_string(pid)}};
}
/// Whether the job is loaded: one of everybody's or one of the user's.
inline ToolQuestion job(const std::string &label, bool isEverybodys, std::uint32_t userId)
{
    return {"/bin/launchctl",
            {"print", (isEverybodys ? "system/" : "gui/" + std::to_string(userId) + '/') + label}};
}
/// Who signed the program.
inline ToolQuestion signature(const std::string &program)
{
    return {"/usr/bin/codesign", {"-dv", "--verbose=2", program}};
}

} // namespace ToolQuestions
} // namespace swabby
