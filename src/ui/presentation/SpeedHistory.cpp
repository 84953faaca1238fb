#include "ui/presentation/SpeedHistory.h"

#include "ui/presentation/PlainWords.h"

#include <algorithm>
#include <cmath>

namespace swabby {
namespace {

// Points come once a minute; three missing ones are a pause, not a late refresh.
constexpr double longestStepSeconds = 180;

} // namespace

QList<SpeedStretch> speedStretches(const History &history, double now)
{
    QList<SpeedStretch> stretches;
    double previous = 0;
    for (const HistoryPoint &point : history) {
        const double x = 1 - (now - point.date) / historySpanSeconds;
        // A load of exactly nothing is the first look after a start, which has nothing to compare with.
        if (!std::isfinite(x) || !std::isfinite(point.cpu) || point.cpu == 0 || x < 0 || x > 1)
            continue;
        const double step = point.date - previous;
        if (stretches.isEmpty() || step > longestStepSeconds || step < 0)
            stretches.append(SpeedStretch());
        stretches.last().append(QPointF(x, std::clamp(point.cpu / 100, 0.0, 1.0)));
        previous = point.date;
    }
    return stretches;
}

QString averageSpeedText(const History &history)
{
    if (history.isEmpty())
        return {};
    double sum = 0;
    for (const HistoryPoint &point : history)
        sum += point.cpu;
    return QStringLiteral("Avg ") + wholeNumberText(sum / static_cast<double>(history.size())) +
           QLatin1Char('%');
}

QString speedHistorySentence(const History &history)
{
    if (history.isEmpty())
        return QStringLiteral("Speed over the last 24 hours, nothing recorded yet");
    const auto busiest =
        std::max_element(history.begin(), history.end(),
                         [](const auto &one, const auto &other) { return one.cpu < other.cpu; });
    return QStringLiteral("Speed over the last 24 hours, at most %1% busy")
        .arg(wholeNumberText(busiest->cpu));
}

} // namespace swabby
