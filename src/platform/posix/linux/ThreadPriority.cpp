#include "platform/posix/ThreadPriority.h"

#include <sys/resource.h>
#include <unistd.h>

namespace swabby {

void useUtilityPriority()
{
    // Linux keeps a nice value for every thread.
    constexpr int utilityNice = 5;
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), utilityNice);
}

} // namespace swabby
