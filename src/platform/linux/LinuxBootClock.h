#pragma once

#include "platform/BootClock.h"

#include <optional>
#include <string>
#include <string_view>

namespace swabby {

/// When the machine started, seconds since 1970, from the text of /proc/stat; no value when it does not say.
std::optional<double> bootTimeFrom(std::string_view statText);

/// Seconds since then, from the text of /proc/uptime; 0 when it does not say.
double uptimeFrom(std::string_view uptimeText);

/// Boot time from /proc/stat (btime), process starts from /proc/PID/stat. Reads files only, from any
/// thread. Both are counted from the one boot time read at construction, so that the difference of the
/// two is the kernel's own figure to a hundredth of a second, however the clock was set in between.
class LinuxBootClock final : public BootClock {
public:
    explicit LinuxBootClock(std::string procRoot);

    std::optional<double> bootEpoch() override;
    std::optional<double> startEpoch(std::int32_t pid) override;

private:
    const std::string m_procRoot;
    const std::optional<double> m_bootEpoch;
};

} // namespace swabby
