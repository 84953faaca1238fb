#pragma once

namespace swabby {

/// Whether the application stands among the running applications or lives in the menu bar only.
enum class ActivationPolicy { regular, accessory };

class DockPresence {
public:
    virtual ~DockPresence() = default;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
};

/// For systems where a program without a window shows nowhere anyway.
class NoDockPresence final : public DockPresence {
public:
    void setActivationPolicy(ActivationPolicy policy) override { static_cast<void>(policy); }
};

} // namespace swabby
