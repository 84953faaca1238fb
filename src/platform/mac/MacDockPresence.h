#pragma once

#include "platform/DockPresence.h"

namespace swabby {

/// The application's own place in the Dock. Main thread; without effect in a program without windows.
class MacDockPresence final : public DockPresence {
public:
    void setActivationPolicy(ActivationPolicy policy) override;
};

} // namespace swabby
