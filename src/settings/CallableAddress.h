#pragma once

#include <QtCore/QUrl>

namespace swabby {

/// Only an encrypted connection, or one that does not leave this computer.
bool mayBeCalled(const QUrl &address);

} // namespace swabby
