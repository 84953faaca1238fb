#pragma once

#include <QtCore/QString>

#include <cstdint>

namespace swabby {

/// One browser's many processes in one line.
struct BrowserRollupEntry {
    QString browserName;
    int processCount = 0;
    std::uint64_t totalMemBytes = 0;
    double totalCPUPercent = 0;

    bool operator==(const BrowserRollupEntry &) const = default;
};

} // namespace swabby
