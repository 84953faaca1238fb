#pragma once

#include "engine/ProcessSample.h"

#include <QtCore/QList>

namespace swabby {

/// What the listed programs move together, e.g. "5.1 MB/s".
QString totalNetworkRate(const QList<ProcessSample> &users);

/// "moving right now, 4 programs".
QString networkSentence(const QList<ProcessSample> &users);

} // namespace swabby
