#include "platform/posix/LocalSocket.h"

#include "platform/posix/Channels.h"

#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>

namespace swabby {
namespace {

std::optional<sockaddr_un> addressOf(const std::filesystem::path &path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.native().size() >= sizeof address.sun_path)
        return std::nullopt;
    std::memcpy(address.sun_path, path.c_str(), path.native().size());
    return address;
}

void useWithoutWaiting(const Descriptor &socket)
{
    ::fcntl(socket.number(), F_SETFL, ::fcntl(socket.number(), F_GETFL) | O_NONBLOCK);
}

} // namespace

Descriptor listenAt(const std::filesystem::path &path)
{
    const auto address = addressOf(path);
    Descriptor socket = makeLocalSocket();
    useWithoutWaiting(socket);
    ::unlink(path.c_str());
    constexpr int fewWaiting = 8;
    // Nobody can connect before it listens, and by then it is the user's own.
    if (!address ||
        ::bind(socket.number(), reinterpret_cast<const sockaddr *>(&*address), sizeof *address) != 0 ||
        ::chmod(path.c_str(), S_IRUSR | S_IWUSR) != 0 || ::listen(socket.number(), fewWaiting) != 0)
        return Descriptor();
    return socket;
}

Descriptor acceptFrom(const Descriptor &listener)
{
    Descriptor caller = acceptCaller(listener.number());
    useWithoutWaiting(caller);
    return caller;
}

bool sayTo(const Descriptor &socket, std::string_view words)
{
    return ::send(socket.number(), words.data(), words.size(), withoutSignal) ==
           static_cast<ssize_t>(words.size());
}

std::string hearFrom(const Descriptor &socket, std::size_t most)
{
    std::string words(most, '\0');
    const ssize_t size = ::recv(socket.number(), words.data(), words.size(), 0);
    words.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return words;
}

std::string askAt(const std::filesystem::path &path, std::string_view words, std::size_t longestAnswer,
                  std::chrono::milliseconds patience)
{
    const auto address = addressOf(path);
    const Descriptor socket = makeLocalSocket();
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(patience);
    const timeval time = {seconds.count(),
                          static_cast<suseconds_t>(std::chrono::microseconds(patience - seconds).count())};
    if (!address || ::setsockopt(socket.number(), SOL_SOCKET, SO_SNDTIMEO, &time, sizeof time) != 0 ||
        ::setsockopt(socket.number(), SOL_SOCKET, SO_RCVTIMEO, &time, sizeof time) != 0 ||
        ::connect(socket.number(), reinterpret_cast<const sockaddr *>(&*address), sizeof *address) != 0 ||
        !sayTo(socket, words))
        return {};
    std::string answer;
    while (answer.size() < longestAnswer) {
        const std::string more = hearFrom(socket, longestAnswer - answer.size());
        if (more.empty())
            break;
        answer += more;
    }
    return answer;
}

} // namespace swabby
