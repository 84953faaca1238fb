#include "platform/linux/ProgramWindows.h"

#include "platform/TextScan.h"
#include "platform/linux/KernelFile.h"

#include <algorithm>
#include <vector>

namespace swabby {

std::unordered_set<std::int32_t> processIdsFrom(std::string_view text)
{
    std::unordered_set<std::int32_t> pids;
    while (const auto line = nextLine(text))
        if (const auto pid = integerOf<std::int32_t>(*line); pid && *pid > 0)
            pids.insert(*pid);
    return pids;
}

bool isInUse(std::string_view socket, std::string_view kernelsTable)
{
    constexpr std::size_t stateColumn = 5;
    constexpr std::size_t nameColumn = 7;
    constexpr std::string_view isConnected = "03";
    if (kernelsTable.empty())
        return true;
    while (const auto line = nextLine(kernelsTable)) {
        const std::vector<std::string_view> columns = piecesOf(*line);
        if (columns.size() <= nameColumn || columns[stateColumn] != isConnected)
            continue;
        std::string_view name = columns[nameColumn];
        name.remove_prefix(name.starts_with('@') ? 1 : 0); // no file has that name
        if (name == socket)
            return true;
    }
    return false;
}

bool ProgramWindows::askToClose(std::int32_t pid) const
{
    const std::string answer = run(std::to_string(pid));
    std::string_view text = answer;
    return integerOf<int>(nextWord(text)).value_or(0) > 0;
}

std::unordered_set<std::int32_t> DesktopHolders::pids()
{
    constexpr std::size_t managerAndPanel = 2;
    const std::lock_guard lock(m_mutex);
    // A display that does not answer just now takes nobody off.
    const auto hasEnded = [this](const ProcessIdentity &known) {
        return m_control.identify(known.pid) != known;
    };
    if (std::erase_if(m_known, hasEnded) > 0)
        m_pause = m_callsToPass = 0;
    if (m_known.size() < managerAndPanel && m_callsToPass-- == 0)
        look();
    std::unordered_set<std::int32_t> pids;
    for (const ProcessIdentity &known : m_known)
        pids.insert(known.pid);
    return pids;
}

// A panel comes up soon after what the desktop starts with it, or never.
void DesktopHolders::look()
{
    constexpr int longestPause = 15;
    m_pause = m_callsToPass = std::min(2 * m_pause + 1, longestPause);
    for (const std::int32_t pid : m_windows.holders())
        if (const auto identity = m_control.identify(pid);
            identity && std::find(m_known.begin(), m_known.end(), *identity) == m_known.end())
            m_known.push_back(*identity);
}

std::string ProgramWindows::run(const std::string &argument) const
{
    if (m_helper.empty() || (m_mayCall && !m_mayCall()))
        return {};
    const auto arguments = argument.empty() ? std::vector<std::string>() : std::vector{argument};
    return m_shell.run(m_helper, arguments, ToolOutput::standardOutput).value_or(std::string());
}

} // namespace swabby
