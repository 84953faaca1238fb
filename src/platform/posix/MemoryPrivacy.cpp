#include "platform/posix/MemoryPrivacy.h"

#include <sys/resource.h>
#if defined(__linux__)
#include <sys/prctl.h>
#endif

namespace swabby {

void keepMemoryPrivate()
{
#if defined(__linux__)
    ::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
#endif
    const rlimit none = {0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
}

} // namespace swabby
