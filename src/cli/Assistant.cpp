#include "ai/CloudAI.h"
#include "cli/Output.h"
#include "cli/StateJson.h"
#include "cli/Verbs.h"
#include "engine/Samplers.h"
#include "flows/ai/AssistantNotes.h"

#include <QtCore/QCoreApplication>

#include <algorithm>

namespace swabby {
namespace {

/// What happened on the way to an answer goes to standard error, beside the answer.
template <typename Value>
void printNote(const Answered<Value> &answer, const QString &sentNote)
{
    if (answer.wantsKey)
        printProblem(AssistantNotes::wantsKey() + QStringLiteral(" (swabbyctl key set)"));
    else if (answer.isSwitchedOff)
        printProblem(AssistantNotes::isSwitchedOff() +
                     QStringLiteral(" (swabbyctl settings aiEnabled true)"));
    else if (answer.wasSent)
        printProblem(sentNote);
}

QCoro::Task<> printAnswer(CloudAI &ai, QString question, QString context, bool json)
{
    const auto answer = co_await ai.ask(question, context);
    if (json)
        print(jsonText(QJsonObject{{QStringLiteral("appToQuit"), answer.value.appToQuit},
                                   {QStringLiteral("explanation"), answer.value.explanation}}) +
              '\n');
    else
        print(harmlessText(answer.value.explanation) + QLatin1Char('\n') +
              (answer.value.appToQuit.isEmpty()
                   ? QString()
                   : QStringLiteral("It names: ") + harmless(answer.value.appToQuit) + QLatin1Char('\n')));
    printNote(answer, AssistantNotes::sentForAnswer());
    QCoreApplication::exit(done);
}

QCoro::Task<> printExplanation(CloudAI &ai, ExplainRequest request, bool json)
{
    const auto answer = co_await ai.explain(request);
    const ActionRecommendation advice = recommendation(request);
    if (json)
        print(jsonText(QJsonObject{{QStringLiteral("text"), answer.value},
                                   {QStringLiteral("recommendation"), caseName(advice)},
                                   {QStringLiteral("label"), recommendationLabel(advice)}}) +
              '\n');
    else
        print(harmlessText(answer.value) + QStringLiteral("\n\n") + recommendationLabel(advice) +
              QLatin1Char('\n'));
    printNote(answer, AssistantNotes::sentForExplanation());
    QCoreApplication::exit(done);
}

/// No value when there is no such program or startup item.
std::optional<ExplainRequest> requestFor(const Arguments &arguments, const AppState &state)
{
    if (arguments.pid) {
        const auto process = findProcess(*arguments.pid, state);
        return process ? std::optional(ExplainRequest{*process}) : std::nullopt;
    }
    const auto &items = state.loginItems();
    const auto item = std::find_if(items.begin(), items.end(), [&](const LoginItem &candidate) {
        return candidate.id() == *arguments.item;
    });
    return item != items.end() ? std::optional(ExplainRequest{*item}) : std::nullopt;
}

} // namespace

std::optional<ProcessSample> findProcess(std::int32_t pid, const AppState &state)
{
    if (const auto process = state.published().findProcess(pid))
        return process;
    const auto survey = state.machine().processes->begin();
    const auto found = ProcessSampler::processes(*survey, {pid}, state.machine().ownProcessId);
    return found.empty() ? std::nullopt : std::optional(found.begin()->second);
}

int runAsk(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    const QString question = arguments.operands.first().trimmed();
    if (question.isEmpty()) {
        printProblem(QStringLiteral("swabbyctl: the question is blank; usage: swabbyctl %1")
                         .arg(QLatin1String(arguments.row->usage)));
        return wrongUsage;
    }
    AppState state(machine, Record::nothing);
    CloudAI ai(machine, modelAddressesFromEnvironment());
    return runRefreshed(state, machine->refreshesUntilReal,
                        [&] { printAnswer(ai, question, state.systemContextSummary(), arguments.json); });
}

int runExplain(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    if (arguments.pid.has_value() == arguments.item.has_value()) {
        printProblem(QStringLiteral("swabbyctl: explain takes one of --pid PID and --item ID"));
        return wrongUsage;
    }
    AppState state(machine, Record::nothing);
    CloudAI ai(machine, modelAddressesFromEnvironment());
    return runRefreshed(state, machine->refreshesUntilReal, [&] {
        if (const auto request = requestFor(arguments, state)) {
            printExplanation(ai, *request, arguments.json);
            return;
        }
        if (arguments.json)
            print(jsonText(QJsonValue::Null) + '\n');
        printProblem(arguments.pid
                         ? QStringLiteral("swabbyctl: no program with the process id %1").arg(*arguments.pid)
                         : QStringLiteral("swabbyctl: no startup item \"%1\"").arg(*arguments.item));
        QCoreApplication::exit(notDone);
    });
}

} // namespace swabby
