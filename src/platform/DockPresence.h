#pragma once

namespace swabby {

/// Whether the application stands among the running applications or lives in the menu bar only.
enum class ActivationPolicy { regular, accessory };

class DockPresence {
public:
    virtual ~DockPresence() = default;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    /// Whether the policy changes anything that a person sees.
    virtual bool isThere() const { return true; }
};

/// For systems where a program without a window shows nowhere anyway.
class NoDockPresence final : public DockPresence {
public:
    void setActivationPolicy(ActivationPolicy policy) override { static_cast<void>(policy); }
    bool isThere() const override { return false; }
};

} // namespace swabby
