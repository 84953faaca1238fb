#include "platform/linux/helper/Confinement.h"

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sched.h>
#include <seccomp.h>
#include <sstream>
#include <string>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

namespace swabby {
namespace {

constexpr rlim_t mostAddresses = 256 * 1024 * 1024;
constexpr rlim_t mostDescriptors = 64;
constexpr rlim_t mostProcessorSeconds = 1;

/// What computing, reading (fonts, say) and answering take; everything else fails.
constexpr auto allowedCalls =
    "read write readv writev pread64 close lseek _llseek fcntl fcntl64 fstat fstat64 stat stat64 lstat "
    "lstat64 newfstatat fstatat64 statx statfs fstatfs statfs64 fstatfs64 access faccessat faccessat2 "
    "readlink readlinkat getdents64 getcwd mmap mmap2 munmap mremap mprotect madvise brk futex "
    "futex_time64 rt_sigaction sigaltstack rt_sigprocmask rt_sigreturn sigreturn getpid gettid getuid "
    "geteuid getgid getegid getrandom clock_gettime gettimeofday clock_gettime64 uname "
    "sched_getaffinity sched_yield sysinfo exit exit_group set_robust_list rseq";

bool limit(decltype(RLIMIT_AS) resource, rlim_t most)
{
    const rlimit both = {most, most};
    return ::setrlimit(resource, &both) == 0;
}

bool endAfter(std::chrono::milliseconds processorTime, std::chrono::seconds time)
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(processorTime);
    const std::chrono::microseconds rest = processorTime - seconds;
    const itimerval once = {{0, 0}, {seconds.count(), rest.count()}};
    ::alarm(static_cast<unsigned>(time.count()));
    // The timer can be taken back, the limit cannot.
    return ::setitimer(ITIMER_PROF, &once, nullptr) == 0 && limit(RLIMIT_CPU, mostProcessorSeconds);
}

bool allowCalls(scmp_filter_ctx filter)
{
    std::istringstream names(allowedCalls);
    for (std::string name; names >> name;) {
        // Not every processor has all of them, nor does every library know them.
        const int call = ::seccomp_syscall_resolve_name(name.c_str());
        if (call >= 0 && ::seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, 0) != 0)
            return false;
    }
    constexpr scmp_datum_t changing = O_ACCMODE | O_CREAT | O_TRUNC;
    const auto allow = [&](int call, const scmp_arg_cmp &argument) {
        return ::seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, call, 1, &argument) == 0;
    };
    // Threads are this process's; the other way to start one hides its flags, and is left for this one when
    // it does not exist.
    return allow(SCMP_SYS(openat), {2, SCMP_CMP_MASKED_EQ, changing, O_RDONLY}) &&
           allow(SCMP_SYS(clone), {0, SCMP_CMP_MASKED_EQ, CLONE_THREAD, CLONE_THREAD}) &&
           ::seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0) == 0;
}

} // namespace

bool confineProgram()
{
    return ::close_range(STDERR_FILENO + 1, ~0U, 0) == 0 && limit(RLIMIT_AS, mostAddresses) &&
           limit(RLIMIT_FSIZE, 0) && limit(RLIMIT_CORE, 0) && limit(RLIMIT_NOFILE, mostDescriptors) &&
           ::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0) == 0;
}

CallFilter makeCallFilter()
{
    const CallFilter filter(::seccomp_init(SCMP_ACT_ERRNO(EPERM)), [](scmp_filter_ctx made) {
        if (made != nullptr)
            ::seccomp_release(made);
    });
    return filter && allowCalls(filter.get()) ? filter : nullptr;
}

bool confineProcess(const CallFilter &filter, std::chrono::milliseconds processorTime,
                    std::chrono::seconds time)
{
    return filter && endAfter(processorTime, time) && ::seccomp_load(filter.get()) == 0;
}

} // namespace swabby
