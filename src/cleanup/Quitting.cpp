#include "cleanup/Quitting.h"

#include "engine/Samplers.h"

namespace swabby {
namespace {

bool isNeverEnded(std::int32_t pid, const Machine &machine)
{
    constexpr std::int32_t first = 1;
    return pid <= first || pid == machine.ownProcessId;
}

} // namespace

std::optional<ProcessIdentity> Quitting::identify(const ProcessSample &shown, Machine &machine)
{
    if (isNeverEnded(shown.pid, machine))
        return std::nullopt;
    const auto identity = machine.processControl->identify(shown.pid);
    // Looked up after its identity was taken: what has the name now is what was identified, or newer.
    const auto found =
        ProcessSampler::processes(*machine.processes->begin(), {shown.pid}, machine.ownProcessId);
    const auto process = found.find(shown.pid);
    // What turns out to hold the session was not asked about in these words.
    const bool isThat = process != found.end() && process->second.name == shown.name &&
                        (shown.holdsSession || !process->second.holdsSession);
    return isThat ? identity : std::nullopt;
}

bool Quitting::quit(const ProcessIdentity &process, Force force, Machine &machine)
{
    if (isNeverEnded(process.pid, machine))
        return false;
    if (force == Force::yes)
        return machine.processControl->signal(process, QuitSignal::kill);
    const bool isStillThat = machine.processControl->identify(process.pid) == process;
    return isStillThat && (machine.runningApplications->terminate(process.pid) ||
                           machine.processControl->signal(process, QuitSignal::terminate));
}

} // namespace swabby
