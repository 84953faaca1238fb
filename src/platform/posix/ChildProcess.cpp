#include "platform/posix/ChildProcess.h"

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

namespace swabby {
namespace {

std::vector<char *> pointersTo(const std::vector<std::string> &texts)
{
    std::vector<char *> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string &text : texts)
        pointers.push_back(const_cast<char *>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

pid_t startChild(const ChildProgram &program, const ChildStreams &streams, Bond bond)
{
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    if (::posix_spawn_file_actions_init(&actions) != 0)
        return -1;
    if (::posix_spawnattr_init(&attributes) != 0) {
        ::posix_spawn_file_actions_destroy(&actions);
        return -1;
    }
    const auto connect = [&actions](int given, int own, int access) {
        if (given == nowhere)
            ::posix_spawn_file_actions_addopen(&actions, own, "/dev/null", access, 0);
        else
            ::posix_spawn_file_actions_adddup2(&actions, given, own);
    };
    connect(streams.input, STDIN_FILENO, O_RDONLY);
    connect(streams.output, STDOUT_FILENO, O_WRONLY);
    connect(streams.error, STDERR_FILENO, O_WRONLY);

    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setsigdefault(&attributes, &all);
    ::posix_spawnattr_setpgroup(&attributes, 0);
    int flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
    flags |= bond == Bond::child ? POSIX_SPAWN_SETPGROUP : POSIX_SPAWN_SETSID;
#ifdef POSIX_SPAWN_CLOEXEC_DEFAULT
    flags |= POSIX_SPAWN_CLOEXEC_DEFAULT;
#endif
    ::posix_spawnattr_setflags(&attributes, static_cast<short>(flags));

    std::vector<std::string> words = {program.executable};
    words.insert(words.end(), program.arguments.begin(), program.arguments.end());
    pid_t child = -1;
    const int problem = ::posix_spawn(&child, program.executable.c_str(), &actions, &attributes,
                                      pointersTo(words).data(), pointersTo(program.environment).data());
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    return problem == 0 ? child : -1;
}

} // namespace swabby
