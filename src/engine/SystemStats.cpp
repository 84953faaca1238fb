#include "engine/SystemStats.h"

#include "platform/HarmlessText.h"

namespace swabby {

double memoryPercent(const SystemStats &stats)
{
    if (stats.memTotalBytes == 0)
        return 0;
    return static_cast<double>(stats.memUsedBytes) / static_cast<double>(stats.memTotalBytes) * 100;
}

QString volumeText(const SystemStats &stats)
{
    constexpr qsizetype longest = 40;
    return stats.diskMountPoint.isEmpty()
               ? QString()
               : QStringLiteral(" on ") + cutTo(oneLine(stats.diskMountPoint), longest);
}

} // namespace swabby
