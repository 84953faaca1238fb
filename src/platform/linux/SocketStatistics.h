#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace swabby {

/// What one connection has moved since it was made.
struct SocketBytes {
    std::uint64_t cookie = 0; ///< the kernel's own name for the socket, never used twice
    std::uint32_t inode = 0;  ///< as in "socket:[…]" under /proc/PID/fd
    std::uint32_t userId = 0;
    std::uint64_t received = 0;
    std::uint64_t sent = 0; ///< as far as the other side has confirmed it

    bool operator==(const SocketBytes &) const = default;
};

/// Every TCP connection of this network namespace, IPv4 and IPv6, from the kernel's socket diagnostics
/// (netlink). UDP does not count its bytes, and a closed connection is forgotten at once: both are missing
/// in every figure made of this. No value when the kernel refuses. Waits for the kernel for at most a
/// second.
std::optional<std::vector<SocketBytes>> tcpSocketBytes();

/// Adds the sockets of one datagram of such an answer. True while more datagrams follow; no value when the
/// kernel reports an error or the datagram is garbled.
std::optional<bool> addSockets(std::span<const std::byte> datagram, std::vector<SocketBytes> &sockets);

} // namespace swabby
