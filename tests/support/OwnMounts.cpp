#include "support/OwnMounts.h"

#include "support/RandomTree.h"

#include <sched.h>
#include <sys/mount.h>

namespace swabby {

std::string inOwnMounts(const std::function<std::string()> &work)
{
    return inChild([&]() -> std::string {
        if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
            return "SKIP";
        return work();
    });
}

} // namespace swabby
