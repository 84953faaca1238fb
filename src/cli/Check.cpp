#include "cli/CleanupJson.h"
#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/StateText.h"
#include "cli/Verbs.h"
#include "engine/ByteCount.h"
#include "engine/ProgramFigures.h"
#include "engine/WholeNumber.h"
#include "flows/ai/AssistantNotes.h"
#include "flows/health/FullCheck.h"

#include <QtCore/QCoreApplication>

namespace swabby {
namespace {

QJsonObject checkJson(const FullCheck &check)
{
    const SwabbyCheckResult &result = check.result();
    return {{QStringLiteral("removalCandidates"), arrayOf(result.removalCandidates)},
            {QStringLiteral("loginItemsToReview"), toJson(result.loginItemsToReview)},
            {QStringLiteral("processToWatch"),
             result.processToWatch ? QJsonValue(toJson(*result.processToWatch)) : QJsonValue()},
            {QStringLiteral("headline"), result.headline},
            {QStringLiteral("summary"), result.summary},
            {QStringLiteral("findings"), result.findings()},
            {QStringLiteral("completedSteps"), QJsonArray::fromStringList(check.completedSteps())}};
}

QString checkText(const SwabbyCheckResult &result, const MachineWords &words)
{
    QString text = QLatin1Char('\n') + inBold(harmless(result.headline)) + QLatin1Char('\n') +
                   harmlessText(result.summary) + QLatin1Char('\n');
    std::vector<QStringList> rows;
    for (const RemovableItem &item : result.removalCandidates)
        rows.push_back({fileByteCount(item.sizeBytes), harmless(item.title), harmless(item.id)});
    if (!rows.empty())
        text += QLatin1Char('\n') + inBold(QStringLiteral("Reclaimable storage")) + QLatin1Char('\n') +
                table(rows, {0});
    if (!result.loginItemsToReview.isEmpty())
        text += QLatin1Char('\n') + inBold(QStringLiteral("Startup items to review")) + QLatin1Char('\n') +
                loginItemsText(result.loginItemsToReview);
    if (result.processToWatch)
        text += QLatin1Char('\n') + inBold(QStringLiteral("High power usage")) + QStringLiteral("\n  ") +
                harmless(result.processToWatch->name) + QStringLiteral("  ") +
                coresText(result.processToWatch->cpuPercent, words)
                    .value_or(percentText(result.processToWatch->cpuPercent)) +
                QStringLiteral(" busy\n");
    return text;
}

} // namespace

int runCheck(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    AppState state(machine, Record::nothing);
    CloudAI ai(machine, modelAddressesFromEnvironment());
    FullCheck check(state, ai);
    if (!arguments.json)
        QObject::connect(&check, &FullCheck::stepCompleted, &check, [](const QString &step) {
            print(inColor(QStringLiteral("✓ "), HealthLevel::green) + step + QLatin1Char('\n'));
        });
    QObject::connect(&check, &FullCheck::finished, &check, [&] {
        if (!check.result().problem.isEmpty()) {
            printProblem(QStringLiteral("swabbyctl: ") + check.result().problem);
            QCoreApplication::exit(notDone);
            return;
        }
        print(arguments.json ? jsonText(checkJson(check)) + '\n'
                             : checkText(check.result(), machine->words).toUtf8());
        if (check.result().failure && !arguments.json)
            printProblem(AssistantNotes::reason(check.result().failure));
        QCoreApplication::exit(done);
    });
    constexpr int once = 1;
    return runRefreshed(state, once, [&] { check.run(); });
}

} // namespace swabby
