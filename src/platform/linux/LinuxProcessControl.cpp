#include "platform/linux/LinuxProcessControl.h"

#include "platform/linux/KernelFile.h"
#include "platform/linux/ProcessStat.h"
#include "platform/posix/Descriptor.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace swabby {

std::optional<ProcessIdentity> LinuxProcessControl::identify(std::int32_t pid)
{
    const std::string line = fileText(m_procRoot + '/' + std::to_string(pid) + "/stat");
    const auto stat = processStatFrom(line);
    if (!stat)
        return std::nullopt;
    return ProcessIdentity{.pid = pid, .started = stat->startTicks};
}

bool LinuxProcessControl::signal(const ProcessIdentity &process, QuitSignal signal)
{
    // The handle stays with whoever has the id now, so looking after it was taken leaves no gap.
    const Descriptor handle(static_cast<int>(::syscall(SYS_pidfd_open, process.pid, 0)));
    return handle.isOpen() && identify(process.pid) == process &&
           ::syscall(SYS_pidfd_send_signal, handle.number(), static_cast<int>(signal), nullptr, 0) == 0;
}

} // namespace swabby
