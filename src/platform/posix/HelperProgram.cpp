#include "platform/posix/HelperProgram.h"

#include "platform/posix/Channels.h"
#include "platform/posix/ChildProcess.h"
#include "platform/posix/LateLibrary.h"

#include <QtCore/QDeadlineTimer>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>

namespace swabby {
namespace {

/// No answer is larger.
constexpr std::size_t largestAnswer = 8 * 1024 * 1024;

/// Sends the task with the descriptor. Without waiting: a helper that takes none is stopped.
bool sendTask(int socket, const HelperTask &task, int descriptor)
{
    TaskMessage message;
    message.task = task;
    cmsghdr *head = CMSG_FIRSTHDR(&message.head);
    head->cmsg_level = SOL_SOCKET;
    head->cmsg_type = SCM_RIGHTS;
    head->cmsg_len = CMSG_LEN(sizeof descriptor);
    std::memcpy(CMSG_DATA(head), &descriptor, sizeof descriptor);
    return ::sendmsg(socket, &message.head, withoutSignal | MSG_DONTWAIT) ==
           static_cast<ssize_t>(sizeof message.task);
}

bool waitFor(int socket, short event, const QDeadlineTimer &end)
{
    pollfd watched = {socket, event, 0};
    int result = 0;
    do
        result = ::poll(&watched, 1, static_cast<int>(end.remainingTime()));
    while (result < 0 && errno == EINTR);
    return result > 0;
}

bool sendAll(int socket, std::string_view content, const QDeadlineTimer &end)
{
    while (!content.empty() && waitFor(socket, POLLOUT, end)) {
        const ssize_t count = ::send(socket, content.data(), content.size(), withoutSignal | MSG_DONTWAIT);
        if (count >= 0)
            content.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EAGAIN && errno != EINTR)
            return false;
    }
    return content.empty() && ::shutdown(socket, SHUT_WR) == 0;
}

std::optional<std::string> receiveAll(int socket, const QDeadlineTimer &end)
{
    std::string answer;
    std::array<char, 64 * 1024> buffer;
    while (waitFor(socket, POLLIN, end)) {
        const ssize_t count = ::recv(socket, buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (count == 0)
            return answer.empty() ? std::nullopt : std::optional(std::move(answer));
        if (count > 0)
            answer.append(buffer.data(), static_cast<std::size_t>(count));
        else if (errno != EAGAIN && errno != EINTR)
            break;
        if (answer.size() > largestAnswer)
            break;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> HelperProgram::ask(std::string_view request,
                                              std::chrono::milliseconds processorTime)
{
    auto [own, others] = makeSocketPair();
    if (!own.isOpen() || !hand(others.number(), {static_cast<std::uint32_t>(processorTime.count())}))
        return std::nullopt;
    // Held by the process that answers and nobody else: its end is the end of the answer.
    others.reset();
    const QDeadlineTimer end(helperPatience);
    if (!sendAll(own.number(), request, end))
        return std::nullopt;
    return receiveAll(own.number(), end);
}

void HelperProgram::begin()
{
    const std::unique_lock lock(m_mutex, std::try_to_lock);
    if (lock && m_process < 0)
        start();
}

void HelperProgram::end()
{
    const std::scoped_lock lock(m_mutex);
    stop();
}

bool HelperProgram::hand(int descriptor, const HelperTask &task)
{
    const std::scoped_lock lock(m_mutex);
    if (m_process >= 0 && sendTask(m_socket.number(), task, descriptor))
        return true;
    // None yet, or somebody else has ended it.
    stop();
    return start() && sendTask(m_socket.number(), task, descriptor);
}

bool HelperProgram::start()
{
    auto [own, others] = makeSocketPair();
    if (!own.isOpen())
        return false;
    const std::string program = ownFolder() / m_name;
    m_process = startChild({program}, {.input = others.number()});
    m_socket = std::move(own);
    if (m_process < 0 && !std::exchange(m_hasComplained, true))
        qWarning("%s cannot be started", program.c_str());
    return m_process >= 0;
}

void HelperProgram::stop()
{
    m_socket.reset();
    if (m_process < 0)
        return;
    ::kill(-m_process, SIGKILL);
    while (::waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {
    }
    m_process = -1;
}

} // namespace swabby
