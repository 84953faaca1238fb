#include "ui/presentation/Gauges.h"

#include "engine/ByteCount.h"
#include "ui/presentation/PlainWords.h"

#include <algorithm>
#include <cmath>

namespace swabby {
namespace {

// A bar has no use for less than nothing or more than everything.
double barFraction(double fraction)
{
    return std::isfinite(fraction) ? std::clamp(fraction, 0.0, 1.0) : 0;
}

Tint tintAbove(double value, double orange, double red)
{
    return value >= red ? Tint::red : value >= orange ? Tint::orange : Tint::accent;
}

Gauge speedGauge(const SystemStats &stats, bool isKnown)
{
    Gauge gauge = {
        QStringLiteral("gauge.with.dots.needle.67percent"), QStringLiteral("Speed"), {}, {}, 0, {}};
    if (!isKnown) {
        gauge.rest = QStringLiteral("Measuring…");
        return gauge;
    }
    gauge.value = wholeNumberText(stats.cpuUsagePercent) + QStringLiteral("% busy");
    gauge.fraction = barFraction(stats.cpuUsagePercent / 100);
    gauge.tint = tintAbove(stats.cpuUsagePercent, 30, 70);
    return gauge;
}

Gauge memoryGauge(const SystemStats &stats)
{
    const double fraction = stats.memTotalBytes == 0 ? 0
                                                     : static_cast<double>(stats.memUsedBytes) /
                                                           static_cast<double>(stats.memTotalBytes);
    return {QStringLiteral("memorychip"),
            QStringLiteral("Memory"),
            memoryByteCount(stats.memUsedBytes),
            QStringLiteral("/ ") + memoryByteCount(stats.memTotalBytes),
            barFraction(fraction),
            tintAbove(fraction, 0.7, 0.85)};
}

Gauge storageGauge(const SystemStats &stats)
{
    return {QStringLiteral("internaldrive"),         QStringLiteral("Storage"),
            fileByteCount(stats.diskFreeBytes),      QStringLiteral("free") + volumeText(stats),
            barFraction(usedStorageFraction(stats)), storageTint(stats)};
}

Gauge batteryGauge(const SystemStats &stats)
{
    const int percent = stats.batteryPercent.value_or(0);
    const QString time = stats.timeRemainingMinutes
                             ? QStringLiteral("· ") + hoursAndMinutes(*stats.timeRemainingMinutes)
                             : QString();
    return {batterySymbol(stats.isCharging),
            stats.isCharging ? QStringLiteral("Battery (charging)") : QStringLiteral("Battery"),
            QString::number(percent) + QLatin1Char('%'),
            time,
            barFraction(percent / 100.0),
            Tint::accent};
}

} // namespace

QList<Gauge> overviewGauges(const SystemStats &stats, bool speedIsKnown)
{
    QList<Gauge> gauges = {speedGauge(stats, speedIsKnown), memoryGauge(stats), storageGauge(stats)};
    if (stats.batteryPercent)
        gauges.append(batteryGauge(stats));
    return gauges;
}

QList<Gauge> gaugesToCome()
{
    QList<Gauge> gauges = overviewGauges({}, false);
    for (Gauge &gauge : gauges)
        gauge = {gauge.symbol, gauge.title, {}, QStringLiteral("Measuring…"), 0, {}};
    return gauges;
}

double usedStorageFraction(const SystemStats &stats)
{
    if (stats.diskTotalBytes == 0)
        return 1;
    return 1 - static_cast<double>(stats.diskFreeBytes) / static_cast<double>(stats.diskTotalBytes);
}

Tint storageTint(const SystemStats &stats)
{
    return usedStorageFraction(stats) >= 0.9 ? Tint::red : Tint::accent;
}

QString batterySymbol(bool isCharging)
{
    return isCharging ? QStringLiteral("battery.100.bolt") : QStringLiteral("battery.75");
}

} // namespace swabby
