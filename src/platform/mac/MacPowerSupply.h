#pragma once

#include "platform/PowerSupply.h"
#include "platform/Shell.h"

namespace swabby {

/// The first of the power sources that the system lists, and the hardware report.
class MacPowerSupply final : public PowerSupply {
public:
    explicit MacPowerSupply(Shell &shell) : m_shell(shell) {}

    std::optional<PowerSource> firstSource() override;
    BatteryHealth healthAndCycles() override;

private:
    Shell &m_shell;
};

} // namespace swabby
