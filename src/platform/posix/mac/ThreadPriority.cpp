#include "platform/posix/ThreadPriority.h"

#include <pthread.h>

namespace swabby {

void useUtilityPriority()
{
    ::pthread_set_qos_class_self_np(QOS_CLASS_UTILITY, 0);
}

} // namespace swabby
