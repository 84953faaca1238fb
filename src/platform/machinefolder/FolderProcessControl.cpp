#include "platform/machinefolder/FolderProcessControl.h"

namespace swabby {

std::optional<ProcessIdentity> FolderProcessControl::identify(std::int32_t pid)
{
    const double started = m_boot.startEpoch(pid).value_or(0);
    return ProcessIdentity{.pid = pid, .started = started > 0 ? static_cast<std::uint64_t>(started) : 0};
}

bool FolderProcessControl::signal(const ProcessIdentity &process, QuitSignal signal)
{
    if (m_unsignalablePids.contains(process.pid) || identify(process.pid) != process)
        return false;
    m_events.write(QStringLiteral("signal"),
                   QJsonObject{{QStringLiteral("pid"), process.pid},
                               {QStringLiteral("signal"), static_cast<int>(signal)}});
    return true;
}

} // namespace swabby
