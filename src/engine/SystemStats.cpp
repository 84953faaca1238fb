#include "engine/SystemStats.h"

namespace swabby {

double memoryPercent(const SystemStats &stats)
{
    if (stats.memTotalBytes == 0)
        return 0;
    return static_cast<double>(stats.memUsedBytes) / static_cast<double>(stats.memTotalBytes) * 100;
}

} // namespace swabby
