#include "platform/linux/helper/RequestServer.h"

#include "platform/linux/helper/Confinement.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/HelperTask.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace swabby {
namespace {

constexpr std::size_t largestRequest = 8 * 1024 * 1024;
/// More than anybody asks at once: while some take long, the next request finds a process that is ready.
constexpr int mostReady = 4;
/// How one ends for which there was no request any more.
constexpr int noRequest = 2;

struct Request {
    HelperTask task;
    Descriptor connection;
};

/// No value when there will be none.
std::optional<Request> nextRequest()
{
    TaskMessage message;
    ssize_t count = 0;
    do
        count = ::recvmsg(STDIN_FILENO, &message.head, MSG_CMSG_CLOEXEC);
    while (count < 0 && errno == EINTR);
    const cmsghdr *head = CMSG_FIRSTHDR(&message.head);
    if (count != static_cast<ssize_t>(sizeof message.task) || head == nullptr ||
        head->cmsg_type != SCM_RIGHTS)
        return std::nullopt;
    int descriptor = -1;
    std::memcpy(&descriptor, CMSG_DATA(head), sizeof descriptor);
    return Request{message.task, Descriptor(descriptor)};
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

bool answer(const Request &request, const CallFilter &filter, AnswerRequest *answerTo)
{
    // The next requests are none of this process's business.
    ::close(STDIN_FILENO);
    const int connection = request.connection.number();
    const std::chrono::milliseconds time(request.task.processorMilliseconds);
    const bool isConfined = confineProcess(filter, time, helperPatience);
    const auto content = readAll(connection);
    return content &&
           writeAll(connection, answerTo(isConfined ? std::string_view(*content) : std::string_view()));
}

/// The life of a process that waits for a request and answers it. Gives its exit status.
int waitAndAnswer(const CallFilter &filter, AnswerRequest *answerTo)
{
    // Who made it makes the next one.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const auto request = nextRequest();
    if (!request)
        return noRequest;
    return answer(*request, filter, answerTo) ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int serveRequests(AnswerRequest *answerTo)
{
    if (!confineProgram())
        return EXIT_FAILURE;
    const CallFilter filter = makeCallFilter();
    const auto makeOne = [&] {
        if (::fork() == 0)
            ::_exit(waitAndAnswer(filter, answerTo));
    };
    for (int made = 0; made < mostReady; ++made)
        makeOne();
    for (int status = 0; ::wait(&status) >= 0; makeOne())
        if (WIFEXITED(status) && WEXITSTATUS(status) == noRequest)
            return EXIT_SUCCESS;
    // Without any of them the next request has this program started anew.
    return EXIT_FAILURE;
}

} // namespace swabby
