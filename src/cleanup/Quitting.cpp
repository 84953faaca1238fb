#include "cleanup/Quitting.h"

#include "engine/Samplers.h"

namespace swabby {
namespace {

bool isNeverEnded(std::int32_t pid, const Machine &machine)
{
    constexpr std::int32_t first = 1;
    return pid <= first || pid == machine.ownProcessId;
}

bool tell(const ProcessIdentity &process, Quitting::Means means, Machine &machine)
{
    ProcessControl &control = *machine.processControl;
    if (means == Quitting::Means::kill)
        return control.signal(process, QuitSignal::kill);
    if (means == Quitting::Means::terminate)
        return control.signal(process, QuitSignal::terminate);
    RunningApplications &applications = *machine.runningApplications;
    return control.identify(process.pid) == process &&
           (applications.terminate(process) ||
            (applications.asksAll() && control.signal(process, QuitSignal::terminate)));
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
    // What turns out to hold the session, or to be another one's, was not asked about in these words.
    const bool isThat = process != found.end() && process->second.name == shown.name &&
                        (!shown.mayBeQuit() || process->second.mayBeQuit());
    return isThat ? identity : std::nullopt;
}

Quitting::Means Quitting::gentlestMeans(const ProcessIdentity &process, Machine &machine)
{
    RunningApplications &applications = *machine.runningApplications;
    return applications.asksAll() || applications.canAsk(process) ? Means::question : Means::terminate;
}

Quitting::Outcome Quitting::quit(const ProcessIdentity &process, Means means, Machine &machine,
                                 const StopToken &stop)
{
    // Longer than most programs take to save what they know, and a person looks at a button without effect.
    constexpr std::chrono::seconds patience(5);
    if (isNeverEnded(process.pid, machine) || !tell(process, means, machine))
        return Outcome::notTold;
    const auto hasEnded = machine.processControl->endsWithin(patience, process, stop);
    if (!hasEnded)
        return Outcome::told;
    if (*hasEnded)
        return Outcome::ended;
    const bool isWorthAsking = means == Means::question && !stop.stopRequested();
    return isWorthAsking && machine.runningApplications->canAsk(process) ? Outcome::isAsked : Outcome::runsOn;
}

} // namespace swabby
