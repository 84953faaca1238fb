#include "platform/posix/MemoryPrivacy.h"

#include <sys/prctl.h>
#include <sys/resource.h>

namespace swabby {

void keepMemoryPrivate()
{
    ::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
    const rlimit none = {0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
}

} // namespace swabby
