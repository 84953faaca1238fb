#include "platform/posix/MemoryThrift.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace swabby {

void giveMemoryBack()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace swabby
