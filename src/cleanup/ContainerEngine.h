#pragma once

#include "platform/CleanupPlaces.h"

#include <QtCore/QByteArray>

#include <optional>
#include <string>

namespace swabby {

/// The socket of this computer through which the person's container tool speaks with its engine,
/// "unix:///var/run/docker.sock", found as the tool itself finds it. No value when its engine is somewhere
/// else or nobody can tell. Reads two small files.
std::optional<std::string> localContainerEngine(const ContainerSettings &settings);

/// The context chosen in the text of the tool's config.json, and the engine's address in that of a context's
/// meta.json; empty when they say none.
std::string currentContext(const QByteArray &json);
std::string engineAddress(const QByteArray &json);

} // namespace swabby
