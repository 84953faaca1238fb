#pragma once

#include "platform/ProcessControl.h"

#include <string>

namespace swabby {

/// Processes by their start as the kernel counts it, signalled through a handle that stands for one process
/// only.
class LinuxProcessControl final : public ProcessControl {
public:
    /// The folder is /proc.
    explicit LinuxProcessControl(std::string procRoot) : m_procRoot(std::move(procRoot)) {}

    std::optional<ProcessIdentity> identify(std::int32_t pid) override;
    bool signal(const ProcessIdentity &process, QuitSignal signal) override;
    std::optional<bool> endsWithin(std::chrono::milliseconds time, const ProcessIdentity &process,
                                   const StopToken &stop) override;

private:
    const std::string m_procRoot;
};

} // namespace swabby
