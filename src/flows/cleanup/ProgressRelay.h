#pragma once

#include "platform/ScanControl.h"

#include <QtCore/QObject>

#include <functional>

namespace swabby {

/// An ear for a search that runs on other threads. It tells the context's thread about ten times a second,
/// and always the latest. The context has to outlive the search, and hears nothing once it is gone.
std::function<void(const ScanProgress &)> relayProgress(QObject *context,
                                                        std::function<void(const ScanProgress &)> hear);

} // namespace swabby
