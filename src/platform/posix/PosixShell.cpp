#include "platform/posix/PosixShell.h"

#include "platform/Utf8.h"
#include "platform/posix/Channels.h"
#include "platform/posix/ChildProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char **environ;

namespace swabby {
namespace {

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

struct Stream {
    int descriptor = nowhere; ///< when it is at its end, or there is none
    std::string text = {};
};

/// Takes what has come by now.
void readOn(Stream &stream)
{
    std::array<char, 16 * 1024> buffer = {};
    const ssize_t count = ::read(stream.descriptor, buffer.data(), buffer.size());
    if (count > 0)
        stream.text.append(buffer.data(), static_cast<std::size_t>(count));
    else if (count == 0 || (errno != EINTR && errno != EAGAIN))
        stream.descriptor = nowhere;
}

/// What a tool complains of is a line or two.
constexpr std::size_t longestComplaint = 64 * 1024;

void readComplaint(Stream &complaint)
{
    readOn(complaint);
    complaint.text.resize(std::min(complaint.text.size(), longestComplaint));
}

bool hasMore(const Stream &stream)
{
    pollfd watched = {stream.descriptor, POLLIN, 0};
    return stream.descriptor != nowhere && ::poll(&watched, 1, 0) > 0;
}

/// Reads the output to its end, or until one of the tokens stops, and what was complained of by then.
void readAll(Stream &output, Stream &complaint, const StopToken &own, const StopToken &callers)
{
    while (output.descriptor != nowhere) {
        pollfd watched[4] = {{output.descriptor, POLLIN, 0},
                             {complaint.descriptor, POLLIN, 0},
                             {own.descriptor(), POLLIN, 0},
                             {callers.descriptor(), POLLIN, 0}};
        if (::poll(watched, 4, -1) < 0 && errno != EINTR)
            return;
        if (own.stopRequested() || callers.stopRequested())
            return;
        if (watched[0].revents != 0)
            readOn(output);
        if (watched[1].revents != 0)
            readComplaint(complaint);
    }
    while (hasMore(complaint) && complaint.text.size() < longestComplaint)
        readComplaint(complaint);
}

/// Hands it all over, unless nobody takes it any more or one of the tokens stops first.
void sendAll(int socket, std::string_view input, const StopToken &own, const StopToken &callers)
{
    while (!input.empty() && !own.stopRequested() && !callers.stopRequested()) {
        pollfd watched[3] = {
            {socket, POLLOUT, 0}, {own.descriptor(), POLLIN, 0}, {callers.descriptor(), POLLIN, 0}};
        ::poll(watched, 3, -1);
        const ssize_t count = ::send(socket, input.data(), input.size(), withoutSignal | MSG_DONTWAIT);
        if (count > 0)
            input.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR && errno != EAGAIN)
            return;
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

std::optional<std::string> PosixShell::perform(const std::string &executable,
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
    const pid_t child = startChild({executable, arguments, environmentFor({})}, {}, Bond::stranger);
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
    auto [readEnd, writeEnd] = makePipe();
    if (m_stop.stopRequested() || stop.stopRequested() || !readEnd.isOpen())
        return std::nullopt;
    auto [complaintEnd, complainingEnd] = output == ToolOutput::apart ? makePipe() : Ends();
    const pid_t child = startChild(
        {executable, arguments, environmentFor(variables)},
        {.output = writeEnd.number(),
         .error = output == ToolOutput::bothStreams ? writeEnd.number() : complainingEnd.number()});
    writeEnd.reset();
    complainingEnd.reset();
    if (child < 0)
        return std::nullopt;
    started();

    Stream answer = {readEnd.number()};
    Stream complaint = {complaintEnd.number()};
    readAll(answer, complaint, m_stop, stop);
    readEnd.reset();
    complaintEnd.reset();
    waitForEnd(child, m_stop, stop);
    if (output != ToolOutput::fileNames && !isUtf8(answer.text))
        return std::nullopt;
    if (!complaint.text.empty() && isUtf8(complaint.text))
        answer.text += complaintMark + complaint.text;
    return answer.text;
}

std::string PosixShell::converse(const std::string &executable, std::string_view input, const StopToken &stop)
{
    auto [own, childs] = makeSocketPair();
    if (m_stop.stopRequested() || stop.stopRequested() || !own.isOpen())
        return {};
    const pid_t child = startChild({executable, {}, environmentFor({})},
                                   {.input = childs.number(), .output = childs.number()});
    childs.reset();
    if (child < 0)
        return {};
    sendAll(own.number(), input, m_stop, stop);
    ::shutdown(own.number(), SHUT_WR);
    Stream answer = {own.number()};
    Stream none;
    readAll(answer, none, m_stop, stop);
    ::kill(-child, SIGKILL);
    waitForEnd(child, m_stop, stop);
    return answer.text;
}

} // namespace swabby
