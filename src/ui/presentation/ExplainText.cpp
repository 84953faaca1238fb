#include "ui/presentation/ExplainText.h"

#include "engine/ProgramFigures.h"
#include "ui/presentation/ConfirmationText.h"
#include "ui/presentation/MenuText.h"
#include "ui/presentation/PlainWords.h"
#include "ui/presentation/ProcessText.h"

namespace swabby {

ExplainText explainText(const ExplainRequest &request, const MachineWords &words)
{
    ExplainText text;
    text.recommendation = recommendationLabel(recommendation(request));
    text.recommendationTint = tintOf(recommendation(request));
    if (const auto *process = std::get_if<ProcessSample>(&request.kind)) {
        const MenuEntry forceQuit = process->mayBeQuit() ? processMenu().first() : MenuEntry();
        text.name = oneLine(process->name);
        text.tile = tileOf(*process);
        text.trust = trustText(process->trustRatio());
        text.trustSymbol = trustSymbol(process->trustRatio());
        text.figures = coresText(process->cpuPercent, words)
                           .value_or(wholeNumberText(process->cpuPercent) + QLatin1Char('%')) +
                       QStringLiteral(" · ") + programMemoryText(process->rssBytes, words) +
                       ownerRemark(*process);
        text.actionLabel = forceQuit.label;
        text.actionHint = forceQuit.hint;
    } else if (const auto *item = std::get_if<LoginItem>(&request.kind)) {
        text.name = oneLine(item->label);
        text.tile = tileOf(*item);
        text.actionLabel = item->canDisableInPlace ? QStringLiteral("Disable") : words.loginItemSettings;
    }
    return text;
}

} // namespace swabby
