#pragma once

#include "platform/BootClock.h"
#include "platform/Shell.h"

#include <mutex>
#include <string_view>

namespace swabby {

/// The seconds in the text of `sysctl -n kern.boottime`.
std::optional<double> parseBootTime(std::string_view text);

/// The start in the text of `ps -o lstart=`, e.g. "Sat Mar 14 10:22:31 2026", in the local time zone, as
/// seconds since 1970.
std::optional<double> parseStartTime(std::string_view text);

/// Boot and start times as the Mac's tools tell them.
class MacBootClock final : public BootClock {
public:
    explicit MacBootClock(Shell &shell) : m_shell(shell) {}

    std::optional<double> bootEpoch() override;
    std::optional<double> startEpoch(std::int32_t pid) override;

private:
    Shell &m_shell;
    std::once_flag m_bootRead;
    std::optional<double> m_bootEpoch;
};

} // namespace swabby
