#pragma once

#include "platform/linux/AutostartEntries.h"
#include "platform/linux/LinuxCleanupPlaces.h"
#include "platform/linux/SessionHolders.h"

#include <string>
#include <vector>

namespace swabby {

/// What the environment says of the person's session. Paths are absolute and without a trailing slash; lists
/// have the most important first.
struct Session {
    UserFolders folders;
    ProgramFolders programs;
    std::vector<std::string> sharedData; ///< where applications, icons and the like are described
    AutostartFolders autostart;
    std::string busAddress;       ///< of the session's message bus
    std::string display;          ///< of its X server; empty when it has none
    std::string displaySocket;    ///< where that listens; empty when it is another computer's
    std::string compositor;       ///< of its Wayland session, the same
    SessionServers servers;       ///< that bus among them
    std::string systemBusAddress; ///< empty when no service manager runs this machine
    ContainerSettings containers;
    /// Swabby's own program for a window; the path an AppImage was started by, since what lies inside is gone
    /// with it.
    std::string ownProgram;
};

/// The environment as it is now, with what the desktop's standards put in the place of what is unset.
Session sessionFromEnvironment();

/// Each folder with that behind it.
std::vector<std::string> withEnding(std::vector<std::string> list, const std::string &ending);

} // namespace swabby
