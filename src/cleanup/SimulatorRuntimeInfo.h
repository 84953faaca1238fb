#pragma once

#include <QtCore/QString>

#include <cstdint>
#include <optional>

namespace swabby {

/// A system that a developer's simulator can run.
struct SimulatorRuntimeInfo {
    QString identifier; ///< what the simulator tool calls it
    QString name;       ///< "iOS 17.2"
    std::int64_t sizeBytes = 0;
    std::optional<std::int64_t> daysSinceUsed; ///< absent when never used, or nobody knows

    bool operator==(const SimulatorRuntimeInfo &) const = default;
};

} // namespace swabby
