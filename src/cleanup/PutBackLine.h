#pragma once

#include "platform/Disposal.h"

#include <QtCore/QByteArray>

#include <optional>

namespace swabby {

/// The line of a put-back record for what was moved to the Trash, its end included.
QByteArray putBackLine(const TrashedItem &item);

/// What such a line tells of; no value for one that is torn, or by somebody else.
std::optional<TrashedItem> itemOfPutBackLine(const QByteArray &line);

} // namespace swabby
