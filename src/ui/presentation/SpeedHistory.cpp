#include "ui/presentation/SpeedHistory.h"

#include "ui/presentation/PlainWords.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace swabby {
namespace {

// Points come once a minute; three missing ones are a pause, not a late refresh.
constexpr double longestStepSeconds = 180;

double placeInTheDay(const HistoryPoint &point, double now)
{
    return 1 - (now - point.date) / historySpanSeconds;
}

// The points that the line goes through, each with a load of 0 to 100. A load of exactly nothing is the first
// look after a start, which has nothing to compare with.
History drawnPoints(const History &history, double now)
{
    History drawn;
    for (HistoryPoint point : history) {
        const double x = placeInTheDay(point, now);
        if (!std::isfinite(x) || x < 0 || x > 1 || !std::isfinite(point.cpu) || point.cpu == 0)
            continue;
        point.cpu = std::clamp(point.cpu, 0.0, 100.0);
        drawn.push_back(point);
    }
    return drawn;
}

} // namespace

QList<SpeedStretch> speedStretches(const History &history, double now)
{
    QList<SpeedStretch> stretches;
    double previous = 0;
    for (const HistoryPoint &point : drawnPoints(history, now)) {
        const double step = point.date - previous;
        if (stretches.isEmpty() || step > longestStepSeconds || step < 0)
            stretches.append(SpeedStretch());
        stretches.last().append(QPointF(placeInTheDay(point, now), point.cpu / 100));
        previous = point.date;
    }
    return stretches;
}

QString averageSpeedText(const History &history, double now)
{
    const History drawn = drawnPoints(history, now);
    if (drawn.isEmpty())
        return {};
    const double sum =
        std::accumulate(drawn.begin(), drawn.end(), 0.0,
                        [](double load, const HistoryPoint &point) { return load + point.cpu; });
    return QStringLiteral("Avg ") + wholeNumberText(sum / static_cast<double>(drawn.size())) +
           QLatin1Char('%');
}

QString speedHistorySentence(const History &history, double now)
{
    const History drawn = drawnPoints(history, now);
    if (drawn.isEmpty())
        return QStringLiteral("Speed over the last 24 hours, nothing recorded yet");
    const auto busiest = std::max_element(
        drawn.begin(), drawn.end(), [](const auto &one, const auto &other) { return one.cpu < other.cpu; });
    return QStringLiteral("Speed over the last 24 hours, at most %1% busy")
        .arg(wholeNumberText(busiest->cpu));
}

} // namespace swabby
