#pragma once

#include <array>
#include <chrono>
#include <cstdint>

#include <sys/socket.h>

namespace swabby {

/// How long a request may take, however busy the computer is.
inline constexpr std::chrono::seconds helperPatience(10);

/// What a helper is told with the descriptor over which a request comes.
struct HelperTask {
    std::uint32_t processorMilliseconds = 0; ///< what the request may take
};

/// A task with room for its descriptor, as the socket calls take it. Points into itself.
struct TaskMessage {
    TaskMessage()
    {
        head.msg_iov = &part;
        head.msg_iovlen = 1;
        head.msg_control = room.data();
        head.msg_controllen = room.size();
    }
    TaskMessage(const TaskMessage &) = delete;
    TaskMessage &operator=(const TaskMessage &) = delete;

    HelperTask task;
    msghdr head = {};

private:
    iovec part = {&task, sizeof task};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> room = {};
};

} // namespace swabby
