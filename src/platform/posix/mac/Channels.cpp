#include "platform/posix/Channels.h"

#include <fcntl.h>
#include <sys/socket.h>

namespace swabby {
namespace {

/// In a second step: a child that is started in between is given nothing but its streams there.
Descriptor closedToChildren(int number)
{
    ::fcntl(number, F_SETFD, FD_CLOEXEC);
    return Descriptor(number);
}

Descriptor silent(int socket)
{
    const int on = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
    return closedToChildren(socket);
}

} // namespace

const int withoutSignal = 0;

Ends makePipe()
{
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0)
        return {};
    return {closedToChildren(ends[0]), closedToChildren(ends[1])};
}

Ends makeSocketPair()
{
    int ends[2] = {-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0)
        return {};
    return {silent(ends[0]), silent(ends[1])};
}

Descriptor makeLocalSocket()
{
    return silent(::socket(AF_UNIX, SOCK_STREAM, 0));
}

Descriptor acceptCaller(int listener)
{
    return silent(::accept(listener, nullptr, nullptr));
}

} // namespace swabby
