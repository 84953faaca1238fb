#pragma once

#include "engine/WholeNumber.h"
#include "platform/MachineWords.h"

namespace swabby {

/// A program's share of the processor as sentences say it: "40% of your Mac's power".
inline QString powerText(double cpuPercent, const MachineWords &words)
{
    return percentText(cpuPercent) + QStringLiteral(" of your %1's power").arg(words.computer);
}

} // namespace swabby
