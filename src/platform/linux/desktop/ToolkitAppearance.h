#pragma once

#include "platform/desktop/DesktopAppearance.h"
#include "platform/linux/desktop/SelectionOwner.h"

namespace swabby {

/// What the toolkits are told on an X11 desktop without a portal.
class ToolkitAppearance final : public DesktopAppearance {
    Q_OBJECT

public:
    ToolkitAppearance();

private:
    void read();

    SelectionOwner m_owner;
};

} // namespace swabby
