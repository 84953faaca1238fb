#include "platform/linux/LinuxShell.h"

#include "platform/linux/DiskTools.h"

#include <new>

namespace swabby {

bool LinuxShell::has(const std::string &executable)
{
    return m_tools.has(executable);
}

bool LinuxShell::launch(const std::string &executable, const std::vector<std::string> &arguments)
{
    return m_tools.launch(executable, arguments);
}

std::optional<std::string> LinuxShell::perform(const std::string &executable,
                                               const std::vector<std::string> &arguments, ToolOutput output,
                                               const StopToken &stop)
{
    const auto isStopped = [&] { return m_stop.stopRequested() || stop.stopRequested(); };
    std::optional<std::string> text;
    try {
        if (executable == "/usr/bin/du")
            text = diskUsageText(arguments, isStopped);
        else if (executable == "/usr/bin/find")
            text = folderSearchText(arguments, isStopped);
    } catch (const std::bad_alloc
                 &) { // a folder of millions of files with several names; the tool has its own memory
    }
    return text ? text : m_tools.run(executable, arguments, output, stop);
}

} // namespace swabby
