#include "ui/presentation/CheckText.h"

#include "engine/ProgramFigures.h"
#include "ui/presentation/CleanupText.h"
#include "ui/presentation/HealthText.h"
#include "ui/presentation/PlainWords.h"

#include <algorithm>

namespace swabby {

QList<CheckStep> checkSteps(const QStringList &completed)
{
    QList<CheckStep> steps;
    for (const QString &step : FullCheck::steps())
        steps.append({step, completed.contains(step)});
    return steps;
}

QList<StartupRowText> startupReviewTexts(const FullCheck &check, const QList<LoginItem> &present)
{
    QList<StartupRowText> rows;
    for (const LoginItem &item : check.result().loginItemsToReview) {
        const QString id = item.id();
        if (check.dismissedLoginItemIDs().contains(id) ||
            std::none_of(present.begin(), present.end(),
                         [&](const LoginItem &one) { return one.id() == id; }))
            continue;
        StartupRowText row = judgedRowText(item);
        row.canDisable = true;
        rows.append(row);
    }
    return rows;
}

ProcessRowText watchedText(const ProcessSample &process, const MachineWords &words)
{
    ProcessRowText row = processRowText(process, ProcessRowMode::activity, false, words);
    row.detail = coresText(process.cpuPercent, words)
                     .value_or(wholeNumberText(process.cpuPercent) + QLatin1Char('%')) +
                 QStringLiteral(" busy") + programRemark(process);
    return row;
}

QString CheckStep::spoken() const
{
    return text + (isDone ? QStringLiteral(", done") : QStringLiteral(", still to come"));
}

QString lookingAtText(const FullCheck &check)
{
    // What is left then is to ask about unknown caches and to sum up.
    const bool isThrough = check.completedSteps().size() == FullCheck::steps().size();
    return isThrough ? QStringLiteral("Summing up…") : lookingAtText(check.lookingAt());
}

QString namesSentText(bool usesAssistant)
{
    return usesAssistant ? QStringLiteral("Only two things go by name: the app to watch, and cache folders "
                                          "that Swabby does not know.")
                         : QStringLiteral("The assistant is turned off, so nothing is sent this time.");
}

QString noResultText(const SwabbyCheckResult &result, bool isStopped)
{
    if (isStopped)
        return QStringLiteral("The check was stopped before it was done.");
    return result.problem.isEmpty() ? QString() : sentence(result.problem);
}

QString summaryText(const SwabbyCheckResult &result)
{
    return result.findings() == 0 && result.summary == nothingToDoText() ? QString() : result.summary;
}

QString removedSinceText(const std::vector<RemovableItem> &removed)
{
    return removed.empty() ? QString() : QStringLiteral("Removed since: ") + chosenText(removed);
}

QString sentText(const SwabbyCheckResult &result)
{
    return result.wasSent ? QStringLiteral("Sent to %1 for this: counts and sizes, and the names of the "
                                           "app to watch and of cache folders nobody knew.")
                                .arg(result.host.isEmpty() ? QStringLiteral("Claude") : result.host)
                          : QString();
}

} // namespace swabby
