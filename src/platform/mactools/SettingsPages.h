#pragma once

#include "platform/Permissions.h"

#include <QtCore/QString>

/// The addresses at which a Mac's settings open.
namespace swabby::SettingsPages {

QString loginItems();
/// Where a person allows that.
QString allowing(Permission what);

} // namespace swabby::SettingsPages
