#pragma once

#include "cleanup/SimulatorRuntimeInfo.h"

#include <QtCore/QByteArray>

#include <string_view>
#include <vector>

namespace swabby {

/// One kind of thing that the container engine keeps, and how much of it can go, as the engine prints it.
struct DockerRow {
    QString type;
    QString reclaimable; ///< "1.25GB (45%)"

    bool operator==(const DockerRow &) const = default;
};

/// Seconds since 1970 of a time such as "2024-03-01T12:00:00Z"; no value for any other layout.
std::optional<std::int64_t> parseIsoTime(const QString &text);

/// The runtimes in the simulator tool's JSON, longest unused first; none at all when a single record is not
/// as it should be. `now` is in seconds since 1970.
std::vector<SimulatorRuntimeInfo> parseSimulatorRuntimes(const QByteArray &json, double now);

/// The rows of the container engine's answer; none when it is not running.
std::vector<DockerRow> parseDockerUsage(std::string_view text);

/// The bytes that a size such as "1.25GB (45%)" says, in decimal units; 0 when it says none, the largest
/// number when it says more than fits.
std::int64_t parseByteString(std::string_view text);

} // namespace swabby
