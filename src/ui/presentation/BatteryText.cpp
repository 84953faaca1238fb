#include "ui/presentation/BatteryText.h"

#include "engine/Probes.h"
#include "ui/presentation/PlainWords.h"

#include <algorithm>

namespace swabby {
namespace {

QString batteryHeadline(const SystemStats &stats)
{
    const QString time =
        stats.timeRemainingMinutes ? hoursAndMinutes(*stats.timeRemainingMinutes) : QString();
    if (stats.isCharging)
        return time.isEmpty() ? QStringLiteral("Charging")
                              : QStringLiteral("Charging · %1 until full").arg(time);
    // Without a time to empty it may as well be full and plugged in.
    return time.isEmpty() ? QStringLiteral("Not charging") : QStringLiteral("On battery · %1 left").arg(time);
}

QString temperatureWord(ThermalState state)
{
    switch (state) {
    case ThermalState::nominal:
        return QStringLiteral("Normal");
    case ThermalState::fair:
        return QStringLiteral("Warm");
    case ThermalState::serious:
        return QStringLiteral("Hot");
    case ThermalState::critical:
        return QStringLiteral("Too hot");
    }
    return {};
}

} // namespace

BatterySummary batterySummary(const SystemStats &stats, const MachineWords &words)
{
    BatterySummary summary;
    if (!stats.batteryPercent) {
        summary.headline = QStringLiteral("This %1 has no battery").arg(words.computer);
        summary.condition = QStringLiteral("What uses the most energy is listed all the same.");
        return summary;
    }
    const int percent = *stats.batteryPercent;
    summary.isPresent = true;
    summary.drainersHeading = QStringLiteral("Using the most battery");
    summary.percent = QString::number(percent) + QLatin1Char('%');
    summary.fraction = std::clamp(percent / 100.0, 0.0, 1.0);
    summary.tint = stats.isCharging || percent > 20 ? Tint::green : percent > 10 ? Tint::orange : Tint::red;
    summary.headline = batteryHeadline(stats);
    if (stats.batteryHealthPercent) {
        summary.condition = BatteryMonitor::healthBand(*stats.batteryHealthPercent, words);
        summary.facts.append(
            {QStringLiteral("Health"), QString::number(*stats.batteryHealthPercent) + QLatin1Char('%')});
    }
    if (stats.batteryCycleCount)
        summary.facts.append({QStringLiteral("Charge cycles"), QString::number(*stats.batteryCycleCount)});
    summary.facts.append({QStringLiteral("Temperature"), temperatureWord(stats.thermalState)});
    return summary;
}

} // namespace swabby
