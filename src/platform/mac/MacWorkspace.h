#pragma once

#include "platform/Workspace.h"

namespace swabby {

/// The file manager and the system's settings.
class MacWorkspace final : public Workspace {
public:
    bool reveal(const QString &path) override;
    bool openLoginItemSettings() override;
    bool openPermissionSettings(Permission what) override;
};

} // namespace swabby
