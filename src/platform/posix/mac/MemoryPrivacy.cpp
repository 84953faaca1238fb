#include "platform/posix/MemoryPrivacy.h"

#include <sys/resource.h>

namespace swabby {

void keepMemoryPrivate()
{
    // A signed program's memory is closed to others by its hardened runtime.
    const rlimit none = {0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
}

} // namespace swabby
