#pragma once

#include "engine/HistoryPoint.h"

#include <QtCore/QByteArray>

#include <optional>

namespace swabby {

/// The points of a history's file. No value unless every element is one: half a foreign file is no history.
std::optional<History> historyIn(const QByteArray &text);

/// The file of these points.
QByteArray textOfHistory(const History &points);

} // namespace swabby
