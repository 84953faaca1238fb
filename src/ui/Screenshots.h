#pragma once

#include "ui/UserInterface.h"

namespace swabby {

/// Draws every view of the windows that show the context's state into PNG files of the folder, the main
/// window in that size, its own when that is empty. No value when all went well, else what did not.
std::optional<QString> renderScreenshots(const UserInterfaceContext &context, const QString &folder,
                                         const QSize &mainWindow);

} // namespace swabby
