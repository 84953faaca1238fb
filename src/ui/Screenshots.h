#pragma once

#include "ui/UserInterface.h"

namespace swabby {

/// Draws every view of a main window that shows the context's state into PNG files of the folder. No
/// value when all went well, else what did not.
std::optional<QString> renderScreenshots(const UserInterfaceContext &context, const QString &folder);

} // namespace swabby
