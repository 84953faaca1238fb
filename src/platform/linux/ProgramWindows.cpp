#include "platform/linux/ProgramWindows.h"

#include "platform/TextScan.h"
#include "platform/linux/KernelFile.h"

#include <algorithm>

namespace swabby {

WindowOwners windowOwnersFrom(std::string_view text)
{
    WindowOwners owners;
    while (auto line = nextLine(text)) {
        const std::string_view what = nextWord(*line);
        const std::int32_t pid = integerOf<std::int32_t>(nextWord(*line)).value_or(0);
        if (pid > 0 && what == "holder")
            owners.holders.insert(pid);
        if (pid > 0 && what == "windows")
            owners.askable.insert(pid);
    }
    return owners;
}

WindowOwners ProgramWindows::owners() const
{
    return windowOwnersFrom(run({}));
}

bool ProgramWindows::askToClose(std::int32_t pid) const
{
    const std::string answer = run({std::to_string(pid)});
    std::string_view text = answer;
    return integerOf<int>(nextWord(text)).value_or(0) > 0;
}

std::unordered_set<std::int32_t> DesktopHolders::pids()
{
    constexpr std::size_t managerAndPanel = 2;
    const std::lock_guard lock(m_mutex);
    const bool stand = std::all_of(m_known.begin(), m_known.end(), [this](const ProcessIdentity &known) {
        return m_control.identify(known.pid) == known;
    });
    if (!stand || m_known.size() < managerAndPanel) {
        m_known.clear();
        for (const std::int32_t pid : m_windows.owners().holders)
            if (const auto identity = m_control.identify(pid))
                m_known.push_back(*identity);
    }
    std::unordered_set<std::int32_t> pids;
    for (const ProcessIdentity &known : m_known)
        pids.insert(known.pid);
    return pids;
}

std::string ProgramWindows::run(const std::vector<std::string> &arguments) const
{
    if (m_helper.empty())
        return {};
    return m_shell.run(m_helper, arguments, ToolOutput::standardOutput).value_or(std::string());
}

} // namespace swabby
