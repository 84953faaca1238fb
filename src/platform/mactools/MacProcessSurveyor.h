#pragma once

#include "platform/ProcessSurvey.h"
#include "platform/Shell.h"

namespace swabby {

/// Surveys through `ps`, `top` and `nettop`: every question runs its tool afresh.
class MacProcessSurveyor final : public ProcessSurveyor {
public:
    explicit MacProcessSurveyor(Shell &shell) : m_shell(shell) {}
    std::unique_ptr<ProcessSurvey> begin() override;

private:
    Shell &m_shell;
};

} // namespace swabby
