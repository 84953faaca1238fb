#pragma once

#include "ui/presentation/ProcessText.h"

namespace swabby {

/// What the listed programs move together, e.g. "5.1 MB/s".
QString totalNetworkRate(const QList<ProcessSample> &users);

/// Those of them that were found, as rows; the line under a name says how much of all that moves is its.
QList<ProcessRowText> networkRowTexts(const QList<ProcessSample> &found, const QList<ProcessSample> &users,
                                      const std::set<QString> &pinnedNames, const MachineWords &words);

/// "moving right now, 4 programs".
QString networkSentence(const QList<ProcessSample> &users);

} // namespace swabby
