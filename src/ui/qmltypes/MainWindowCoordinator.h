#pragma once

#include "health/HealthIssue.h"

namespace swabby {

/// Carries out for a main window what its panels ask for. Confirmations and explanations will be raised
/// here too.
class MainWindowCoordinator {
public:
    /// Does what the issue's action says, as far as the window can; it may switch the section shown.
    void perform(const HealthIssue &issue, MainSection &selection) const;
};

} // namespace swabby
