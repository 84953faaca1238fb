// A helper that tries what it is asked to and answers how that went.

#include "platform/linux/helper/RequestServer.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

std::string went(bool isDone)
{
    return isDone ? "done" : "refused";
}

std::string attempt(std::string_view request)
{
    const std::string subject(request.substr(request.find(' ') + 1));
    if (request.starts_with("say"))
        return subject;
    if (request.starts_with("connect"))
        return went(::socket(AF_INET, SOCK_STREAM, 0) >= 0 || ::socket(AF_UNIX, SOCK_STREAM, 0) >= 0);
    if (request.starts_with("start"))
        return went(::fork() >= 0 || ::execl("/bin/true", "true", nullptr) >= 0);
    if (request.starts_with("end"))
        return went(::kill(std::stoi(subject), 0) == 0);
    if (request.starts_with("read"))
        return went(::open(subject.c_str(), O_RDONLY | O_CLOEXEC) >= 0);
    if (request.starts_with("write"))
        return went(::open(subject.c_str(), O_WRONLY | O_CLOEXEC) >= 0 ||
                    ::open((subject + ".new").c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0600) >= 0 ||
                    ::unlink(subject.c_str()) == 0);
    if (request.starts_with("hold"))
        return went(::mmap(nullptr, std::stoul(subject) << 20, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) != MAP_FAILED);
    if (request.starts_with("descriptor"))
        return went(::fcntl(std::stoi(subject), F_GETFD) >= 0);
    if (request.starts_with("environment"))
        return went(*environ != nullptr);
    if (request.starts_with("spin"))
        for (volatile bool goesOn = true; goesOn;) {
        }
    std::abort();
}

} // namespace

int main()
{
    return swabby::serveRequests(&attempt);
}
