#pragma once

#include "engine/HealthLevel.h"
#include "engine/ProcessSample.h"
#include "health/MainSection.h"

#include <QtCore/QList>

#include <optional>
#include <variant>

namespace swabby {

/// Quit the program responsible.
struct KillProcess {
    ProcessSample process;
};

/// Bring the main window to the section where the user can act.
struct OpenSection {
    MainSection section;
};

using HealthIssueAction = std::variant<KillProcess, OpenSection>;

/// One thing that is wrong, in words for a person.
struct HealthIssue {
    HealthLevel level = HealthLevel::yellow;
    MainSection section = MainSection::speed;
    QString what;
    QString why;
    QString how;
    std::optional<HealthIssueAction> action;
};

} // namespace swabby
