#pragma once

#include "platform/ProcessControl.h"
#include "platform/Shell.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_set>

namespace swabby {

/// The helper that speaks with the X server.
inline constexpr auto windowsProgram = "swabby-windows";

/// What that helper said: a process id on each line.
std::unordered_set<std::int32_t> processIdsFrom(std::string_view text);

/// Whether a program has a connection through that socket, by what the kernel tells of local sockets: an X
/// server that a compositor starts on demand is there for those. True when the kernel tells nothing.
bool isInUse(std::string_view socket, std::string_view kernelsTable);

/// The windows of an X display, looked at by a helper that ends within a second whatever the display does.
/// Every call may block that long.
class ProgramWindows {
public:
    /// The helper by its path; an empty display stands for none, and nothing is started for it, nor while
    /// there is a say in it that says no.
    ProgramWindows(Shell &shell, std::string helper, const std::string &display,
                   std::function<bool()> mayCall = {})
        : m_shell(shell),
          m_helper(display.empty() ? std::string() : std::move(helper)),
          m_mayCall(std::move(mayCall))
    {
    }

    /// Whom the desktop stands on: window manager and panel.
    std::unordered_set<std::int32_t> holders() const { return processIdsFrom(run("holders")); }
    /// Whoever has a window that can be asked to close.
    std::unordered_set<std::int32_t> askable() const { return processIdsFrom(run({})); }
    /// Asks every window of the process to close, as its own button does. False when none was asked.
    bool askToClose(std::int32_t pid) const;

private:
    std::string run(const std::string &argument) const;

    Shell &m_shell;
    const std::string m_helper;
    const std::function<bool()> m_mayCall;
};

/// The window manager and the panel. Since refreshes are many, they are looked for again when one of them has
/// ended, and until both are known ever more rarely: each look starts a program. Safe to call from several
/// threads.
class DesktopHolders {
public:
    DesktopHolders(ProgramWindows windows, ProcessControl &control)
        : m_windows(std::move(windows)), m_control(control)
    {
    }

    /// Those that are known; looks for others when it is time.
    std::unordered_set<std::int32_t> pids();

private:
    void look();

    const ProgramWindows m_windows;
    ProcessControl &m_control;
    std::mutex m_mutex;
    std::vector<ProcessIdentity> m_known;
    int m_pause = 0;       ///< how many calls passed between the last two looks
    int m_callsToPass = 0; ///< until the next look
};

} // namespace swabby
