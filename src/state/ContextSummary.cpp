#include "engine/ByteCount.h"
#include "engine/ProgramFigures.h"
#include "engine/WholeNumber.h"
#include "state/AppState.h"

namespace swabby {
namespace {

constexpr qsizetype activeAppsShown = 5;
constexpr qsizetype drainersShown = 4;

QString storageLine(const SystemStats &stats, const MachineWords &words)
{
    const double usedPercent = stats.diskTotalBytes == 0
                                   ? 0
                                   : static_cast<double>(stats.diskTotalBytes - stats.diskFreeBytes) /
                                         static_cast<double>(stats.diskTotalBytes) * 100;
    return QStringLiteral("Storage: ") + percentText(usedPercent) + QStringLiteral(" used, ") +
           fileByteCount(stats.diskFreeBytes) + QStringLiteral(" free") +
           (stats.diskMountPoint.isEmpty() ? QString()
                                           : QStringLiteral(" on ") + words.marked(stats.diskMountPoint));
}

QString activityOf(const MachineWords &words, const ProcessSample &process)
{
    return words.marked(process.name) + QStringLiteral(" — ") + percentText(process.cpuPercent) +
           QStringLiteral(" CPU, ") + percentText(process.memPercent) + QStringLiteral(" memory");
}

} // namespace

QString AppState::systemContextSummary() const
{
    QStringList lines = {
        QStringLiteral("Speed (CPU): ") + percentText(stats().cpuUsagePercent) + QStringLiteral(" busy"),
        QStringLiteral("Memory: ") + percentText(memoryPercent(stats())) + QStringLiteral(" used"),
        storageLine(stats(), machine().words)};
    if (stats().batteryPercent)
        lines.append(
            QStringLiteral("Battery: ") + QString::number(*stats().batteryPercent) +
            (stats().isCharging ? QStringLiteral("% (plugged in)") : QStringLiteral("% (on battery)")));
    lines.append(QStringLiteral("Thermal state: ") + (stats().thermalState == ThermalState::nominal
                                                          ? QStringLiteral("normal")
                                                          : QStringLiteral("running hot")));
    QStringList apps;
    for (const ProcessSample &process : processes().mid(0, activeAppsShown))
        apps.append(activityOf(machine().words, process));
    if (!apps.isEmpty())
        lines.append(QStringLiteral("Top apps by activity") + loadScaleText(machine().words) +
                     QStringLiteral(": ") + apps.join(QStringLiteral("; ")));
    QStringList drainers;
    for (const ProcessSample &process : batteryDrainers())
        if (machine().mayHaveBattery && process.energyImpact > 0 && drainers.size() < drainersShown)
            drainers.append(machine().words.marked(process.name));
    if (!drainers.isEmpty())
        lines.append(QStringLiteral("Top apps by battery drain: ") + drainers.join(QStringLiteral(", ")));
    return lines.join(QLatin1Char('\n'));
}

} // namespace swabby
