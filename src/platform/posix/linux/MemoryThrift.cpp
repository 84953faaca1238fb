#include "platform/posix/MemoryThrift.h"

#include <malloc.h>

namespace swabby {

void giveMemoryBack()
{
    malloc_trim(0);
}

} // namespace swabby
