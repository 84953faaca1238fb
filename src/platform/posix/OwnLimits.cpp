#include "platform/posix/OwnLimits.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

namespace swabby {
namespace {

void endGroup(int /*signal*/)
{
    ::kill(::getpgrp() == ::getpid() ? 0 : ::getpid(), SIGKILL);
}

template <typename Resource>
void limit(Resource resource, rlim_t most)
{
    const rlimit bounds = {most, most};
    ::setrlimit(resource, &bounds);
}

} // namespace

void limitOwnProcess(const OwnLimits &limits)
{
    std::signal(SIGALRM, endGroup);
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(limits.time);
    const auto rest = std::chrono::duration_cast<std::chrono::microseconds>(limits.time - seconds);
    // A time of nothing would be no limit.
    const itimerval alarm = {{0, 0}, {seconds.count(), static_cast<suseconds_t>(rest.count() + 1)}};
    ::setitimer(ITIMER_REAL, &alarm, nullptr);
    limit(RLIMIT_CPU, static_cast<rlim_t>(limits.processorTime.count()));
// An address sanitizer reserves more than any limit for itself.
#ifndef __SANITIZE_ADDRESS__
    limit(RLIMIT_AS, limits.memoryBytes);
#endif
}

} // namespace swabby
