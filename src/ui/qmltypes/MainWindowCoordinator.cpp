#include "ui/qmltypes/MainWindowCoordinator.h"

#include "ui/presentation/Sections.h"

namespace swabby {

void MainWindowCoordinator::perform(const HealthIssue &issue, MainSection &selection) const
{
    if (!issue.action || !canPerform(*issue.action))
        return;
    if (const auto *open = std::get_if<OpenSection>(&*issue.action))
        selection = open->section;
}

} // namespace swabby
