#include "ui/presentation/HealthText.h"

#include "health/HealthRules.h"
#include "ui/presentation/PlainWords.h"

namespace swabby {

QList<IssueCard> issueCards(const QList<HealthIssue> &issues, std::optional<MainSection> only)
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
        if (issue.action) {
            card.actionLabel = oneLine(actionLabel(issue).value_or(QString()));
            card.isDestructive = isDestructive(issue);
        }
        cards.append(card);
    }
    return cards;
}

} // namespace swabby
