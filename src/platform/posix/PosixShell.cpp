#include "platform/posix/PosixShell.h"

#include "platform/Utf8.h"
#include "platform/posix/Descriptor.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char **environ;

namespace swabby {
namespace {

bool makePipe(Descriptor &readEnd, Descriptor &writeEnd)
{
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return false;
    readEnd = Descriptor(ends[0]);
    writeEnd = Descriptor(ends[1]);
    return true;
}

bool names(const char *entry, const std::string &variable)
{
    return std::strncmp(entry, variable.c_str(), variable.size()) == 0 && entry[variable.size()] == '=';
}

std::vector<std::string> environmentFor(const PosixShell::Variables &variables)
{
    std::vector<std::string> result;
    for (char **entry = environ; entry && *entry; ++entry) {
        bool dropped = names(*entry, "ANTHROPIC_API_KEY");
        for (const auto &variable : variables)
            dropped = dropped || names(*entry, variable.first);
        if (!dropped)
            result.emplace_back(*entry);
    }
    for (const auto &[name, value] : variables)
        result.push_back(name + '=' + value);
    return result;
}

std::vector<char *> pointersTo(const std::vector<std::string> &texts)
{
    std::vector<char *> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string &text : texts)
        pointers.push_back(const_cast<char *>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

/// Whether a child ends with this program or has a session of its own.
enum class Bond { child, stranger };

/// Where a stranger writes to: nowhere.
constexpr int noOutput = -1;

// The child starts with default signals, no blocked ones, in a group of its own.
pid_t spawn(const std::string &executable, const std::vector<std::string> &arguments,
            const std::vector<std::string> &environment, int outputEnd, ToolOutput output,
            Bond bond = Bond::child)
{
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    if (::posix_spawn_file_actions_init(&actions) != 0)
        return -1;
    if (::posix_spawnattr_init(&attributes) != 0) {
        ::posix_spawn_file_actions_destroy(&actions);
        return -1;
    }
    ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    if (outputEnd == noOutput)
        ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    else
        ::posix_spawn_file_actions_adddup2(&actions, outputEnd, STDOUT_FILENO);
    if (output == ToolOutput::bothStreams)
        ::posix_spawn_file_actions_adddup2(&actions, outputEnd, STDERR_FILENO);
    else
        ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);

    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setsigdefault(&attributes, &all);
    ::posix_spawnattr_setpgroup(&attributes, 0);
    ::posix_spawnattr_setflags(
        &attributes, static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF |
                                        (bond == Bond::child ? POSIX_SPAWN_SETPGROUP : POSIX_SPAWN_SETSID)));

    std::vector<std::string> words = {executable};
    words.insert(words.end(), arguments.begin(), arguments.end());
    pid_t child = -1;
    const int problem = ::posix_spawn(&child, executable.c_str(), &actions, &attributes,
                                      pointersTo(words).data(), pointersTo(environment).data());
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    return problem == 0 ? child : -1;
}

/// Reads to the end of the file; false when one of the tokens stopped first.
bool readAll(int descriptor, const StopToken &own, const StopToken &callers, std::string &text)
{
    std::vector<char> buffer(64 * 1024);
    for (;;) {
        pollfd watched[3] = {
            {descriptor, POLLIN, 0}, {own.descriptor(), POLLIN, 0}, {callers.descriptor(), POLLIN, 0}};
        if (::poll(watched, 3, -1) < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        if (own.stopRequested() || callers.stopRequested())
            return false;
        if (watched[0].revents == 0)
            continue;
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count > 0)
            text.append(buffer.data(), static_cast<std::size_t>(count));
        else if (count == 0)
            return true;
        else if (errno != EINTR && errno != EAGAIN)
            return true;
    }
}

/// Waits for the child's end; a stop ends its whole group first, whose number is nobody else's until the
/// child is waited for.
void waitForEnd(pid_t child, const StopToken &own, const StopToken &callers)
{
    bool ended = false;
    for (int pause = 1;; pause = std::min(pause * 2, 200)) {
        if (!ended && (own.stopRequested() || callers.stopRequested())) {
            ::kill(-child, SIGKILL);
            ended = true;
        }
        const pid_t result = ::waitpid(child, nullptr, WNOHANG);
        if (result == child || (result < 0 && errno != EINTR))
            return;
        // A tool that closed its output is as good as gone: looking again costs next to nothing.
        pollfd watched[2] = {{ended ? -1 : own.descriptor(), POLLIN, 0},
                             {ended ? -1 : callers.descriptor(), POLLIN, 0}};
        ::poll(watched, 2, pause);
    }
}

} // namespace

std::optional<std::string> PosixShell::run(const std::string &executable,
                                           const std::vector<std::string> &arguments, ToolOutput output,
                                           const StopToken &stop)
{
    return runWith({}, executable, arguments, output, stop, [] {});
}

bool PosixShell::has(const std::string &executable)
{
    std::error_code problem;
    return std::filesystem::exists(executable, problem);
}

bool PosixShell::launch(const std::string &executable, const std::vector<std::string> &arguments)
{
    if (m_stop.stopRequested())
        return false;
    const pid_t child = spawn(executable, arguments, environmentFor({}), noOutput, ToolOutput::standardOutput,
                              Bond::stranger);
    if (child < 0)
        return false;
    // Somebody has to take note of its end, however much later that is.
    std::thread([child] { ::waitpid(child, nullptr, 0); }).detach();
    return true;
}

std::optional<std::string> PosixShell::runWith(const Variables &variables, const std::string &executable,
                                               const std::vector<std::string> &arguments, ToolOutput output,
                                               const StopToken &stop, const std::function<void()> &started)
{
    Descriptor readEnd;
    Descriptor writeEnd;
    if (m_stop.stopRequested() || stop.stopRequested() || !makePipe(readEnd, writeEnd))
        return std::nullopt;
    const pid_t child = spawn(executable, arguments, environmentFor(variables), writeEnd.number(), output);
    writeEnd.reset();
    if (child < 0)
        return std::nullopt;
    started();

    std::string text;
    readAll(readEnd.number(), m_stop, stop, text);
    readEnd.reset();
    waitForEnd(child, m_stop, stop);
    if (output != ToolOutput::fileNames && !isUtf8(text))
        return std::nullopt;
    return text;
}

} // namespace swabby
