#include "engine/ProcessSample.h"

#include <QtCore/QStringList>

#include <algorithm>

namespace swabby {
namespace {

bool isSystemPath(const QString &path)
{
    static const QStringList prefixes = {QStringLiteral("/System/"), QStringLiteral("/usr/libexec/"),
                                         QStringLiteral("/usr/sbin/"), QStringLiteral("/System/Library/")};
    return std::any_of(prefixes.begin(), prefixes.end(),
                       [&](const QString &prefix) { return path.startsWith(prefix); });
}

int scoreByLoad(const ProcessSample &process)
{
    const int drop = process.cpuPercent > 80   ? 45
                     : process.cpuPercent > 50 ? 30
                     : process.cpuPercent > 25 ? 15
                                               : 0;
    const int calm = isSystemPath(process.path) ? 95 : process.isApp ? 90 : 85;
    return calm - drop;
}

int memoryPenalty(double memPercent)
{
    return memPercent > 50 ? 25 : memPercent > 25 ? 10 : 0;
}

// Reaching the limit counts here, while processor and memory must exceed theirs.
int energyPenalty(double energyImpact)
{
    return energyImpact >= 50 ? 25 : energyImpact >= 20 ? 10 : 0;
}

} // namespace

int ProcessSample::trustRatio() const
{
    const int score = scoreByLoad(*this) - memoryPenalty(memPercent) - energyPenalty(energyImpact);
    return std::clamp(score, 5, 99);
}

bool ProcessSample::operator==(const ProcessSample &other) const
{
    return pid == other.pid && cpuPercent == other.cpuPercent && memPercent == other.memPercent;
}

bool shouldForceQuit(const ProcessSample &process)
{
    return process.cpuPercent >= 70 || process.energyImpact >= 45 || process.trustRatio() < 45;
}

ActionRecommendation recommendation(const ProcessSample &process)
{
    if (!process.mayBeQuit())
        return ActionRecommendation::keep;
    if (shouldForceQuit(process))
        return ActionRecommendation::forceQuit;
    if (process.cpuPercent < 25 && process.memPercent < 25)
        return process.trustRatio() < 70 ? ActionRecommendation::quit : ActionRecommendation::keep;
    return ActionRecommendation::quit;
}

QString whyNotQuit(const ProcessSample &process)
{
    if (process.holdsSession)
        return QStringLiteral("keeps your session running");
    return process.owner.isEmpty() ? QString() : QStringLiteral("belongs to ") + process.owner;
}

} // namespace swabby
