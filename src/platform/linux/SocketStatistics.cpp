#include "platform/linux/SocketStatistics.h"

#include <libmnl/libmnl.h>
#include <linux/inet_diag.h>
#include <linux/sock_diag.h>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace swabby {

namespace {

/// The kernel's numbers for the states of a connection; its header for them collides with the one for the
/// byte counts.
enum ConnectionState {
    established = 1,
    finishWait1 = 4,
    finishWait2 = 5,
    closeWait = 8,
    lastAcknowledgement = 9,
    closing = 11,
};

/// The byte counts, when the attribute holds them. An old kernel's information is shorter and has none.
int readCounts(const nlattr *attribute, void *target)
{
    if (mnl_attr_get_type(attribute) != INET_DIAG_INFO)
        return MNL_CB_OK;
    tcp_info info = {};
    std::memcpy(&info, mnl_attr_get_payload(attribute),
                std::min<std::size_t>(mnl_attr_get_payload_len(attribute), sizeof info));
    auto &socket = *static_cast<SocketBytes *>(target);
    socket.received = info.tcpi_bytes_received;
    socket.sent = info.tcpi_bytes_acked;
    return MNL_CB_OK;
}

int addSocket(const nlmsghdr *message, void *target)
{
    if (message->nlmsg_type != SOCK_DIAG_BY_FAMILY ||
        mnl_nlmsg_get_payload_len(message) < sizeof(inet_diag_msg))
        return MNL_CB_OK;
    const auto &description = *static_cast<const inet_diag_msg *>(mnl_nlmsg_get_payload(message));
    const auto [low, high] = description.id.idiag_cookie;
    SocketBytes socket;
    socket.cookie = std::uint64_t{high} << 32 | low;
    socket.inode = description.idiag_inode;
    socket.userId = description.idiag_uid;
    mnl_attr_parse(message, sizeof description, readCounts, &socket);
    static_cast<std::vector<SocketBytes> *>(target)->push_back(socket);
    return MNL_CB_OK;
}

/// The length of the first message of the datagram; 0 when it does not lie whole in it. The library takes a
/// length above two gigabytes for a negative one, which is smaller than any datagram.
std::size_t firstMessage(std::span<const std::byte> datagram)
{
    nlmsghdr header = {};
    if (datagram.size() < sizeof header)
        return 0;
    std::memcpy(&header, datagram.data(), sizeof header);
    return header.nlmsg_len >= sizeof header && header.nlmsg_len <= datagram.size() ? header.nlmsg_len : 0;
}

bool request(const mnl_socket *kernel, std::uint8_t family)
{
    struct {
        nlmsghdr header;
        inet_diag_req_v2 request;
    } message = {};
    message.header.nlmsg_len = sizeof message;
    message.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    message.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    message.request.sdiag_family = family;
    message.request.sdiag_protocol = IPPROTO_TCP;
    message.request.idiag_ext = 1 << (INET_DIAG_INFO - 1);
    // Only the states in which bytes still move: leaving out listening and forgotten connections saves the
    // kernel the walk through those tables.
    message.request.idiag_states = 1U << established | 1U << finishWait1 | 1U << finishWait2 |
                                   1U << closeWait | 1U << lastAcknowledgement | 1U << closing;
    return mnl_socket_sendto(kernel, &message, sizeof message) == static_cast<ssize_t>(sizeof message);
}

bool dump(const mnl_socket *kernel, std::uint8_t family, std::vector<SocketBytes> &sockets)
{
    std::vector<std::byte> buffer(32 * 1024);
    std::optional<bool> more = request(kernel, family) ? std::optional(true) : std::nullopt;
    while (more.value_or(false)) {
        const ssize_t got = mnl_socket_recvfrom(kernel, buffer.data(), buffer.size());
        more = got > 0 ? addSockets(std::span(buffer).first(static_cast<std::size_t>(got)), sockets)
                       : std::nullopt;
    }
    return more.has_value();
}

} // namespace

std::optional<std::vector<SocketBytes>> tcpSocketBytes()
{
    constexpr timeval longestWait = {1, 0}; // the kernel answers while the request is sent
    const std::unique_ptr<mnl_socket, decltype(&mnl_socket_close)> kernel(
        mnl_socket_open2(NETLINK_SOCK_DIAG, SOCK_CLOEXEC), mnl_socket_close);
    std::vector<SocketBytes> sockets;
    if (!kernel ||
        ::setsockopt(mnl_socket_get_fd(kernel.get()), SOL_SOCKET, SO_RCVTIMEO, &longestWait,
                     sizeof longestWait) != 0 ||
        !dump(kernel.get(), AF_INET, sockets))
        return std::nullopt;
    // A machine without IPv6 refuses this one.
    dump(kernel.get(), AF_INET6, sockets);
    return sockets;
}

std::optional<bool> addSockets(std::span<const std::byte> datagram, std::vector<SocketBytes> &sockets)
{
    int result = MNL_CB_OK;
    while (const std::size_t length = firstMessage(datagram)) {
        result = mnl_cb_run(datagram.data(), length, 0, 0, addSocket, &sockets);
        if (result != MNL_CB_OK)
            break;
        datagram = datagram.subspan(std::min<std::size_t>(MNL_ALIGN(length), datagram.size()));
    }
    return result == MNL_CB_ERROR ? std::nullopt : std::optional(result == MNL_CB_OK);
}

} // namespace swabby
