#include "ui/presentation/HealthText.h"

#include "ui/presentation/PlainWords.h"

namespace swabby {
namespace {

QString sectionActionLabel(MainSection section)
{
    switch (section) {
    case MainSection::storage:
        return QStringLiteral("Free up space");
    case MainSection::startup:
        return QStringLiteral("Review startup items");
    default:
        return QStringLiteral("Look into it");
    }
}

} // namespace

QString healthWord(HealthLevel level)
{
    switch (level) {
    case HealthLevel::green:
        return QStringLiteral("Healthy");
    case HealthLevel::yellow:
        return QStringLiteral("Under load");
    case HealthLevel::red:
        return QStringLiteral("Struggling");
    }
    return {};
}

QString actionLabel(const HealthIssueAction &action)
{
    if (const auto *kill = std::get_if<KillProcess>(&action))
        return QStringLiteral("Quit ") + oneLine(kill->process.name);
    return sectionActionLabel(std::get<OpenSection>(action).section);
}

bool isDestructive(const HealthIssueAction &action)
{
    return std::holds_alternative<KillProcess>(action);
}

QList<IssueCard> issueCards(const QList<HealthIssue> &issues,
                            const std::function<bool(const HealthIssueAction &)> &canPerform,
                            std::optional<MainSection> only)
{
    QList<IssueCard> cards;
    for (int index = 0; index < issues.size(); ++index) {
        const HealthIssue &issue = issues.at(index);
        if (only && issue.section != *only)
            continue;
        IssueCard card;
        card.tint = tintOf(issue.level);
        card.severity =
            issue.level == HealthLevel::red ? QStringLiteral("Urgent") : QStringLiteral("Warning");
        card.what = oneLine(issue.what);
        card.why = oneLine(issue.why);
        card.how = oneLine(issue.how);
        card.index = index;
        if (issue.action && canPerform(*issue.action)) {
            card.actionLabel = actionLabel(*issue.action);
            card.isDestructive = isDestructive(*issue.action);
        }
        cards.append(card);
    }
    return cards;
}

} // namespace swabby
