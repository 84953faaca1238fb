#include "platform/posix/Channels.h"

#include <fcntl.h>
#include <sys/socket.h>

namespace swabby {

const int withoutSignal = MSG_NOSIGNAL;

Ends makePipe()
{
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return {};
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

Ends makeSocketPair()
{
    int ends[2] = {-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return {};
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

Descriptor makeLocalSocket()
{
    return Descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
}

Descriptor acceptCaller(int listener)
{
    return Descriptor(::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
}

} // namespace swabby
