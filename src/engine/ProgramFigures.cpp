#include "engine/ProgramFigures.h"

#include "engine/ByteCount.h"
#include "engine/WholeNumber.h"

#include <algorithm>

namespace swabby {
namespace {

constexpr double oneProcessor = 100;

/// "1.3" for a load of 130 to 139; never more than there are, whatever the clocks say.
QString processorsKept(double cpuPercent, const MachineWords &words)
{
    const double most = oneProcessor * words.processors;
    return QString::number(static_cast<double>(wholeNumber(std::min(cpuPercent, most) / 10)) / 10);
}

bool isSaidInProcessors(double cpuPercent, const MachineWords &words)
{
    return words.processors > 1 && cpuPercent >= oneProcessor;
}

} // namespace

std::optional<QString> coresText(double cpuPercent, const MachineWords &words)
{
    if (!isSaidInProcessors(cpuPercent, words))
        return std::nullopt;
    const QString count = processorsKept(cpuPercent, words);
    return count + (count == QLatin1String("1") ? QStringLiteral(" core") : QStringLiteral(" cores"));
}

QString powerText(double cpuPercent, const MachineWords &words)
{
    if (isSaidInProcessors(cpuPercent, words))
        return QStringLiteral("keeping %1 of %2 processors busy")
            .arg(processorsKept(cpuPercent, words), QString::number(words.processors));
    return QStringLiteral("using ") + percentText(cpuPercent) +
           (words.processors > 1 ? QStringLiteral(" of one processor")
                                 : QStringLiteral(" of your %1's power").arg(words.computer));
}

QString loadScaleText(const MachineWords &words)
{
    return words.processors > 1 ? QStringLiteral(" (100% is one of %1 processors)").arg(words.processors)
                                : QString();
}

QString programMemoryText(std::uint64_t bytes, const MachineWords &words)
{
    return words.programsLikeDisks ? fileByteCount(static_cast<std::int64_t>(bytes)) : memoryByteCount(bytes);
}

} // namespace swabby
