#include "platform/posix/MemoryThrift.h"

#include <malloc/malloc.h>

namespace swabby {

void giveMemoryBack()
{
    ::malloc_zone_pressure_relief(nullptr, 0);
}

} // namespace swabby
