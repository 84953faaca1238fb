#pragma once

#include "engine/HistoryPoint.h"

#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtCore/QString>

namespace swabby {

/// A stretch of the day in which Swabby watched without a pause: x 0 (24 hours ago) to 1 (now), y 0
/// (idle) to 1 (fully busy).
using SpeedStretch = QList<QPointF>;

/// The day's stretches, oldest first; longer pauses between points separate them.
QList<SpeedStretch> speedStretches(const History &history, double now);

/// "Avg 24%", of what the line shows; empty when it shows nothing.
QString averageSpeedText(const History &history, double now);

/// The history in one sentence, for those who do not see the line.
QString speedHistorySentence(const History &history, double now);

} // namespace swabby
