#include "platform/desktop/DesktopRequests.h"

namespace swabby {

std::unique_ptr<DesktopFollower> followDesktop(const DesktopRequests &requests)
{
    requests.started(false);
    return nullptr;
}

} // namespace swabby
