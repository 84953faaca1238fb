#include "ui/presentation/HealthText.h"

#include "health/HealthRules.h"
#include "ui/presentation/PlainWords.h"

#include <QtCore/QRegularExpression>

#include <set>

namespace swabby {

namespace {

/// The program that the issue's button ends; 0 when it ends none.
std::int32_t pidToQuit(const HealthIssue &issue)
{
    const auto *kill = issue.action ? std::get_if<KillProcess>(&*issue.action) : nullptr;
    return kill == nullptr ? 0 : kill->process.pid;
}

// What an issue says has figures in it, which change while it stays the same one.
QString issueId(const HealthIssue &issue)
{
    static const QRegularExpression figures(QStringLiteral("[0-9.,]+"));
    QString id = sectionName(issue.section) + QLatin1Char('/') + QString(issue.what).remove(figures);
    if (const std::int32_t pid = pidToQuit(issue))
        id += QLatin1Char('/') + QString::number(pid);
    return id;
}

} // namespace

QList<IssueCard> issueCards(const QList<HealthIssue> &issues, std::optional<MainSection> only)
{
    QList<IssueCard> cards;
    std::set<std::int32_t> offered; // to be quit
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
            card.isOfferedAbove = card.isDestructive && !offered.insert(pidToQuit(issue)).second;
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
