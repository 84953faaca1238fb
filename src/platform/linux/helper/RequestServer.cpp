#include "platform/linux/helper/RequestServer.h"

#include "platform/linux/helper/Confinement.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/HelperProgram.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <sys/socket.h>

namespace swabby {
namespace {

constexpr std::size_t largestRequest = 8 * 1024 * 1024;

struct Request {
    HelperTask task;
    Descriptor connection;
};

/// No value when there will be none.
std::optional<Request> nextRequest()
{
    Request request;
    int descriptor = -1;
    iovec part = {&request.task, sizeof request.task};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof descriptor)> room = {};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = room.data();
    message.msg_controllen = room.size();
    ssize_t count = 0;
    do
        count = ::recvmsg(STDIN_FILENO, &message, MSG_CMSG_CLOEXEC);
    while (count < 0 && errno == EINTR);
    const cmsghdr *head = CMSG_FIRSTHDR(&message);
    if (count != static_cast<ssize_t>(sizeof request.task) || head == nullptr ||
        head->cmsg_type != SCM_RIGHTS)
        return std::nullopt;
    std::memcpy(&descriptor, CMSG_DATA(head), sizeof descriptor);
    request.connection = Descriptor(descriptor);
    return request;
}

std::optional<std::string> readAll(int connection)
{
    std::string content;
    std::array<char, 64 * 1024> buffer;
    for (;;) {
        const ssize_t count = ::read(connection, buffer.data(), buffer.size());
        if (count == 0)
            return content;
        if (count < 0 || content.size() > largestRequest)
            return std::nullopt;
        content.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

bool writeAll(int connection, std::string_view content)
{
    while (!content.empty()) {
        const ssize_t count = ::write(connection, content.data(), content.size());
        if (count < 0)
            return false;
        content.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool answerOne(const Request &request, AnswerRequest *answer)
{
    // The next requests are none of this process's business.
    ::close(STDIN_FILENO);
    if (!confineProcess(std::chrono::milliseconds(request.task.processorMilliseconds), helperPatience))
        return false;
    const auto content = readAll(request.connection.number());
    return content && writeAll(request.connection.number(), answer(*content));
}

} // namespace

int serveRequests(AnswerRequest *answer)
{
    // Nobody asks how a process ended: an answer says all.
    std::signal(SIGCHLD, SIG_IGN);
    if (!confineProgram())
        return EXIT_FAILURE;
    while (const auto request = nextRequest())
        if (::fork() == 0)
            ::_exit(answerOne(*request, answer) ? EXIT_SUCCESS : EXIT_FAILURE);
    return EXIT_SUCCESS;
}

} // namespace swabby
