#include "ui/presentation/ExplainText.h"

#include "engine/ProgramFigures.h"
#include "ui/presentation/ConfirmationText.h"
#include "ui/presentation/MenuText.h"
#include "ui/presentation/PlainWords.h"
#include "ui/presentation/ProcessText.h"
#include "ui/presentation/StartupText.h"

namespace swabby {
namespace {

/// The outermost application bundle that a path leads through; empty for none.
QString bundleIn(const QString &path)
{
    const qsizetype end = path.indexOf(QLatin1String(".app/"));
    return end < 0 ? QString() : path.left(end).section(QLatin1Char('/'), -1);
}

QString belongsTo(const ProcessSample &process, const MachineWords &words)
{
    const ProgramNames names = programNames(process);
    if (process.isApp && !names.second.isEmpty())
        return names.first;
    if (process.path.startsWith(QLatin1String("/System/")))
        return words.system;
    const QString bundle = bundleIn(process.path);
    return bundle == process.name ? QString() : bundle;
}

QString runsFor(const ProcessSample &process, const QString &account)
{
    QString whose = process.owner.isEmpty() ? QStringLiteral("You") : process.owner;
    whose[0] = whose.at(0).toUpper();
    return account.isEmpty() || account == process.owner ? whose
                                                         : whose + QStringLiteral(" (%1)").arg(account);
}

QString runningText(const ProgramOrigin &origin, double now)
{
    const QString since =
        origin.startedAt ? durationText(now - *origin.startedAt) : QStringLiteral("Not known");
    return origin.startedBy.isEmpty() ? since : since + QStringLiteral(", started by ") + origin.startedBy;
}

/// Facts that are left out where there is nothing to say, and wait where that is still to be found out.
class Facts {
public:
    explicit Facts(const std::optional<ProgramOrigin> &origin) : m_origin(origin) {}

    void add(const char *label, const QString &value)
    {
        if (!value.isEmpty())
            m_facts.append({QString::fromLatin1(label), oneLine(value)});
    }
    template <typename ValueOf>
    void addFound(const char *label, ValueOf valueOf)
    {
        add(label, m_origin ? valueOf(*m_origin) : QStringLiteral("…"));
    }
    void addPackage(const MachineWords &words)
    {
        if (!words.packagedPrograms.isEmpty())
            addFound("Package", [](const ProgramOrigin &origin) {
                return origin.package.isEmpty() ? QStringLiteral("None that is known") : origin.package;
            });
    }
    const QList<ExplainFact> &list() const { return m_facts; }

private:
    const std::optional<ProgramOrigin> &m_origin;
    QList<ExplainFact> m_facts;
};

void addFacts(Facts &facts, const ProcessSample &process, const QString &file, double now,
              const MachineWords &words)
{
    facts.add("Belongs to", belongsTo(process, words));
    facts.addFound("Running for", [&](const ProgramOrigin &origin) { return runningText(origin, now); });
    if (!words.packagedPrograms.isEmpty())
        facts.addFound("Runs as",
                       [&](const ProgramOrigin &origin) { return runsFor(process, origin.account); });
    facts.addPackage(words);
    facts.add("Where", file.isEmpty() ? process.path : file);
    facts.add("Uses", coresText(process.cpuPercent, words)
                              .value_or(wholeNumberText(process.cpuPercent) + QLatin1Char('%')) +
                          QStringLiteral(" busy, ") + programMemoryText(process.rssBytes, words) +
                          QStringLiteral(" memory"));
    if (process.holdsSession)
        facts.add("Note", QStringLiteral("It ") + whyNotQuit(process));
}

void addFacts(Facts &facts, const LoginItem &item, const MachineWords &words)
{
    const StartupRowText row = judgedRowText(item);
    facts.add("Starts", row.detail);
    facts.add("Note", row.badge);
    facts.addPackage(words);
    facts.add("Where", item.programPath);
    facts.add("Set up in", item.plistPath);
}

} // namespace

ExplainText explainText(const ExplainRequest &request, const MachineWords &words)
{
    ExplainText text;
    text.recommendation = recommendationLabel(recommendation(request));
    text.recommendationTint = tintOf(recommendation(request));
    if (const auto *process = std::get_if<ProcessSample>(&request.kind)) {
        const MenuEntry forceQuit = process->mayBeQuit() ? processMenu().first() : MenuEntry();
        const ProgramNames names = programNames(*process);
        text.name = oneLine(names.first);
        text.alias = oneLine(names.second);
        text.tile = tileOf(*process);
        text.trust = trustText(process->trustRatio());
        text.trustSymbol = trustSymbol(process->trustRatio());
        text.actionLabel = forceQuit.label;
        text.actionHint = forceQuit.hint;
    } else if (const auto *item = std::get_if<LoginItem>(&request.kind)) {
        text.name = oneLine(item->label);
        text.tile = tileOf(*item);
        text.actionLabel = item->canDisableInPlace ? QStringLiteral("Disable") : words.loginItemSettings;
    }
    return text;
}

QList<ExplainFact> explainFacts(const ExplainRequest &request, const std::optional<ProgramOrigin> &origin,
                                double now, const MachineWords &words)
{
    Facts facts(origin);
    if (const auto *process = std::get_if<ProcessSample>(&request.kind))
        addFacts(facts, *process, origin ? origin->file : QString(), now, words);
    else if (const auto *item = std::get_if<LoginItem>(&request.kind))
        addFacts(facts, *item, words);
    return facts.list();
}

} // namespace swabby
