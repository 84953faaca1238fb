#pragma once

#include "platform/Permissions.h"

#include <QtCore/QString>

namespace swabby {

/// What the desktop opens for people. Each call may wait some seconds for a desktop that does not answer:
/// background work, or a terminal.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Shows the file's folder in the file viewer with the file selected. False when there is no viewer to
    /// ask.
    virtual bool reveal(const QString &path) = 0;
    /// Opens the system's own settings for what starts at login. False when there are none to open.
    virtual bool openLoginItemSettings() = 0;
    /// Opens them where a person allows that. False when there are none to open.
    virtual bool openPermissionSettings(Permission /*what*/) { return false; }
    /// The name of the program that removes what the system's packages brought; empty when there is none.
    virtual QString softwareManager() { return {}; }
    /// Opens that program. False when there is none to open.
    virtual bool openSoftwareManager() { return false; }
};

} // namespace swabby
