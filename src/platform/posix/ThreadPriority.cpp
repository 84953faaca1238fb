#include "platform/posix/ThreadPriority.h"

#ifdef __APPLE__
#include <pthread.h>
#include <pthread/qos.h>
#else
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace swabby {

void useUtilityPriority()
{
#ifdef __APPLE__
    ::pthread_set_qos_class_self_np(QOS_CLASS_UTILITY, 0);
#else
    // Linux keeps a nice value for every thread.
    constexpr int utilityNice = 5;
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), utilityNice);
#endif
}

} // namespace swabby
