#pragma once

#include "platform/ProcessControl.h"
#include "platform/Shell.h"

#include <functional>
#include <string>
#include <string_view>

namespace swabby {

/// When a process started, in seconds since 1970, from the text of `ps -o stat= -o lstart=`. No value when
/// there is none, or when it has ended and is only not yet forgotten.
std::optional<std::uint64_t> parseLivingStart(std::string_view text);

/// Processes by their id and the second in which they started, as `ps` tells it.
class MacProcessControl final : public ProcessControl {
public:
    using SendSignal = std::function<bool(std::int32_t pid, int signal)>;

    explicit MacProcessControl(Shell &shell, SendSignal send = sendSignal)
        : m_shell(shell), m_send(std::move(send))
    {
    }

    std::optional<ProcessIdentity> identify(std::int32_t pid) override;
    bool signal(const ProcessIdentity &process, QuitSignal signal) override;
    std::optional<bool> endsWithin(std::chrono::milliseconds time, const ProcessIdentity &process,
                                   const StopToken &stop) override;

private:
    static bool sendSignal(std::int32_t pid, int signal);

    /// What ps says of it, which is nothing once it is gone; no value when ps cannot be asked.
    std::optional<std::string> textAbout(std::int32_t pid);

    Shell &m_shell;
    const SendSignal m_send;
};

} // namespace swabby
