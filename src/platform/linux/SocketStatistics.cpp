#include "platform/linux/SocketStatistics.h"

#include "platform/linux/KernelFile.h"

#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

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

/// Copies a value out of bytes that need not be aligned; no value when they are too few.
template <typename Value>
std::optional<Value> valueAt(std::span<const std::byte> bytes, std::size_t offset)
{
    if (offset > bytes.size() || bytes.size() - offset < sizeof(Value))
        return std::nullopt;
    Value value;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

constexpr std::size_t aligned(std::size_t size)
{
    return (size + 3) & ~std::size_t{3};
}

/// The byte counts among the attributes that follow a socket's description. An old kernel's information is
/// shorter and has none.
void readCounts(std::span<const std::byte> attributes, SocketBytes &socket)
{
    for (std::size_t offset = 0; const auto header = valueAt<nlattr>(attributes, offset);) {
        if (header->nla_len < sizeof(nlattr) || header->nla_len > attributes.size() - offset)
            return;
        const auto content = attributes.subspan(offset, header->nla_len);
        if (header->nla_type == INET_DIAG_INFO) {
            constexpr std::size_t start = sizeof(nlattr);
            socket.received =
                valueAt<std::uint64_t>(content, start + offsetof(tcp_info, tcpi_bytes_received)).value_or(0);
            socket.sent =
                valueAt<std::uint64_t>(content, start + offsetof(tcp_info, tcpi_bytes_acked)).value_or(0);
        }
        offset += aligned(header->nla_len);
        if (offset > attributes.size())
            return;
    }
}

std::optional<SocketBytes> socketFrom(std::span<const std::byte> message)
{
    const auto description = valueAt<inet_diag_msg>(message, 0);
    if (!description)
        return std::nullopt;
    SocketBytes socket;
    socket.cookie = std::uint64_t{description->id.idiag_cookie[1]} << 32 | description->id.idiag_cookie[0];
    socket.inode = description->idiag_inode;
    socket.userId = description->idiag_uid;
    readCounts(message.subspan(std::min(aligned(sizeof(inet_diag_msg)), message.size())), socket);
    return socket;
}

bool request(int descriptor, std::uint8_t family)
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
    return ::send(descriptor, &message, sizeof message, 0) == static_cast<ssize_t>(sizeof message);
}

bool dump(int descriptor, std::uint8_t family, std::vector<SocketBytes> &sockets)
{
    constexpr int longestWait = 1000; // milliseconds; the kernel answers while the request is sent
    if (!request(descriptor, family))
        return false;
    std::vector<std::byte> buffer(32 * 1024);
    while (true) {
        pollfd waited = {descriptor, POLLIN, 0};
        if (::poll(&waited, 1, longestWait) <= 0)
            return false;
        const ssize_t got = ::recv(descriptor, buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (got <= 0)
            return false;
        const auto more = addSockets(std::span(buffer.data(), static_cast<std::size_t>(got)), sockets);
        if (!more || !*more)
            return more.has_value();
    }
}

} // namespace

std::optional<std::vector<SocketBytes>> tcpSocketBytes()
{
    const Descriptor descriptor(::socket(AF_NETLINK, SOCK_DGRAM | SOCK_CLOEXEC, NETLINK_SOCK_DIAG));
    std::vector<SocketBytes> sockets;
    if (!descriptor.isOpen() || !dump(descriptor.number(), AF_INET, sockets))
        return std::nullopt;
    // A machine without IPv6 refuses this one.
    dump(descriptor.number(), AF_INET6, sockets);
    return sockets;
}

std::optional<bool> addSockets(std::span<const std::byte> datagram, std::vector<SocketBytes> &sockets)
{
    for (std::size_t offset = 0; offset < datagram.size();) {
        const auto header = valueAt<nlmsghdr>(datagram, offset);
        if (!header || header->nlmsg_len < sizeof(nlmsghdr) || header->nlmsg_len > datagram.size() - offset)
            return std::nullopt;
        if (header->nlmsg_type == NLMSG_DONE)
            return false;
        if (header->nlmsg_type == NLMSG_ERROR)
            return std::nullopt;
        const auto content =
            datagram.subspan(offset + sizeof(nlmsghdr), header->nlmsg_len - sizeof(nlmsghdr));
        if (header->nlmsg_type == SOCK_DIAG_BY_FAMILY) {
            if (const auto socket = socketFrom(content))
                sockets.push_back(*socket);
        }
        offset += aligned(header->nlmsg_len);
    }
    return true;
}

} // namespace swabby
