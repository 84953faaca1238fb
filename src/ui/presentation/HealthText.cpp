#include "ui/presentation/HealthText.h"

#include "health/HealthRules.h"
#include "ui/presentation/PlainWords.h"

namespace swabby {

namespace {

// What an issue says has figures in it, so it is told by what it is about.
QString issueId(const HealthIssue &issue)
{
    QString id = sectionName(issue.section);
    if (issue.action)
        if (const auto *kill = std::get_if<KillProcess>(&*issue.action))
            id += QLatin1Char('/') + QString::number(kill->process.pid);
    return id;
}

} // namespace

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
        card.id = issueId(issue);
        if (issue.action) {
            card.actionLabel = oneLine(actionLabel(issue).value_or(QString()));
            card.isDestructive = isDestructive(issue);
        }
        cards.append(card);
    }
    return cards;
}

QString firstLookText(const MachineWords &words)
{
    return QStringLiteral("Taking a first look at your %1…").arg(words.computer);
}

QString nothingToDoText()
{
    return QStringLiteral("Nothing needs your attention right now.");
}

QString checkInvitationText(bool isKnown, bool isHealthy, const MachineWords &words)
{
    if (!isKnown)
        return firstLookText(words);
    return isHealthy ? QStringLiteral("AI scan for storage clutter & power hogs")
                     : QStringLiteral("Issues detected · %1 to inspect").arg(words.press);
}

} // namespace swabby
