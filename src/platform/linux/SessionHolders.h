#pragma once

#include "platform/StopToken.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace swabby {

/// Where those listen that every program of a session talks to.
struct SessionServers {
    /// Of the display server, the compositor and the service manager; one that begins with a zero is no file.
    std::vector<std::string> sockets;
    std::string busAddress;
};

/// The processes that a person's session stands on, as far as the system tells: the ancestors of the given
/// one, whoever listens where the session's servers do, the bus, and who shows the items in the panel. Asks
/// the bus for a quarter of a second at most and waits for nobody else.
std::unordered_set<std::int32_t> sessionHolders(const std::string &procRoot, std::int32_t pid,
                                                const SessionServers &servers, const StopToken &stop);

/// Whether a program is by its name one that sessions stand on: for those that nothing above leads to, such
/// as a window manager. In a folder for temporary files it only calls itself so.
bool holdsSessions(std::string_view path);

} // namespace swabby
