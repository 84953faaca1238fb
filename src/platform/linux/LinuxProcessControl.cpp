#include "platform/linux/LinuxProcessControl.h"

#include "platform/linux/KernelFile.h"
#include "platform/linux/ProcessStat.h"
#include "platform/posix/Descriptor.h"

#include <QtCore/QDeadlineTimer>

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace swabby {
namespace {

/// It stays with whoever has the id now, so looking after it was taken who that is leaves no gap.
Descriptor handleOf(std::int32_t pid)
{
    return Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
}

} // namespace

std::optional<ProcessIdentity> LinuxProcessControl::identify(std::int32_t pid)
{
    const std::string line = fileText(m_procRoot + '/' + std::to_string(pid) + "/stat");
    const auto stat = processStatFrom(line);
    if (!stat || stat->hasEnded)
        return std::nullopt;
    return ProcessIdentity{.pid = pid, .started = stat->startTicks};
}

bool LinuxProcessControl::signal(const ProcessIdentity &process, QuitSignal signal)
{
    const Descriptor handle = handleOf(process.pid);
    return handle.isOpen() && identify(process.pid) == process &&
           ::syscall(SYS_pidfd_send_signal, handle.number(), static_cast<int>(signal), nullptr, 0) == 0;
}

std::optional<bool> LinuxProcessControl::endsWithin(std::chrono::milliseconds time,
                                                    const ProcessIdentity &process, const StopToken &stop)
{
    const Descriptor handle = handleOf(process.pid);
    const QDeadlineTimer end(time);
    pollfd watched[2] = {{handle.number(), POLLIN, 0}, {stop.descriptor(), POLLIN, 0}};
    while (identify(process.pid) == process) {
        if (end.hasExpired() || stop.stopRequested())
            return false;
        ::poll(watched, 2, static_cast<int>(end.remainingTime()));
    }
    return true;
}

} // namespace swabby
