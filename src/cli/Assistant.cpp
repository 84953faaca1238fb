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

/// Where the reason is mended, in the terminal's words.
QString remedy(ModelFailure failure)
{
    switch (failure) {
    case ModelFailure::noAssistant:
    case ModelFailure::keyRefused:
        return QStringLiteral(" (swabbyctl key set)");
    case ModelFailure::switchedOff:
        return QStringLiteral(" (swabbyctl settings aiEnabled true)");
    case ModelFailure::ownOffline:
        return QStringLiteral(" (swabbyctl settings aiAddress ADDRESS)");
    case ModelFailure::retired:
        return QStringLiteral(" (swabbyctl settings aiModel NAME)");
    default:
        return {};
    }
}

/// What happened on the way to an answer goes to standard error, beside the answer. Gives the status to end
/// with.
template <typename Value>
int printWay(const Answered<Value> &answer, const QString &sentNote)
{
    if (answer.failure)
        printProblem(AssistantNotes::reason(answer.failure) + remedy(*answer.failure));
    if (answer.wasSent)
        printProblem(sentNote);
    return answer.failure ? notDone : done;
}

QJsonValue failureJson(const std::optional<ModelFailure> &failure)
{
    return failure ? QJsonValue(caseName(*failure)) : QJsonValue();
}

int printAnswered(const Answered<AskAnswer> &answer, bool json)
{
    const AskAnswer &said = answer.value;
    if (json)
        print(jsonText(QJsonObject{{QStringLiteral("appToQuit"), said.appToQuit},
                                   {QStringLiteral("explanation"), said.explanation},
                                   {QStringLiteral("failure"), failureJson(answer.failure)}}) +
              '\n');
    else
        print(harmlessText(said.explanation) + QLatin1Char('\n') +
              (said.appToQuit.isEmpty()
                   ? QString()
                   : QStringLiteral("It names: ") + harmless(said.appToQuit) + QLatin1Char('\n')));
    return printWay(answer, AssistantNotes::sentForAnswer(answer.host));
}

int printAnswered(const Answered<QString> &answer, const ExplainRequest &request, bool json)
{
    const ActionRecommendation advice = recommendation(request);
    if (json)
        print(jsonText(QJsonObject{{QStringLiteral("text"), answer.value},
                                   {QStringLiteral("recommendation"), caseName(advice)},
                                   {QStringLiteral("label"), recommendationLabel(advice)},
                                   {QStringLiteral("failure"), failureJson(answer.failure)}}) +
              '\n');
    else
        print(harmlessText(answer.value) + QStringLiteral("\n\n") + recommendationLabel(advice) +
              QLatin1Char('\n'));
    return printWay(answer, AssistantNotes::sentForExplanation(answer.host));
}

/// Who asks on a terminal sits in front of it.
const Asking attended = {{}, Unlocking::mayAsk};

/// Awaits the answer, prints it and ends the loop. The question is open until then: when the loop ends
/// before, it was interrupted.
template <typename Value, typename Print>
QCoro::Task<> say(QCoro::Task<Answered<Value>> asking, bool &isOpen, Print printAnswer)
{
    const Answered<Value> answer = co_await asking;
    isOpen = false;
    QCoreApplication::exit(printAnswer(answer));
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
    const auto printAnswer = [&](const Answered<AskAnswer> &answer) {
        return printAnswered(answer, arguments.json);
    };
    bool isOpen = false;
    const int status = runRefreshed(state, machine->refreshesUntilReal, [&] {
        isOpen = true;
        say(ai.ask(question, state.systemContextSummary(), attended), isOpen, printAnswer);
    });
    return isOpen ? printAnswer({.value = CloudAI::noAnswer(), .failure = ModelFailure::cancelled}) : status;
}

int runExplain(const Arguments &arguments, const std::shared_ptr<Machine> &machine)
{
    if (arguments.pid.has_value() == arguments.item.has_value()) {
        printProblem(QStringLiteral("swabbyctl: explain takes one of --pid PID and --item ID"));
        return wrongUsage;
    }
    AppState state(machine, Record::nothing);
    CloudAI ai(machine, modelAddressesFromEnvironment());
    std::optional<ExplainRequest> request;
    const auto printAnswer = [&](const Answered<QString> &answer) {
        return printAnswered(answer, *request, arguments.json);
    };
    bool isOpen = false;
    const int status = runRefreshed(state, machine->refreshesUntilReal, [&] {
        request = requestFor(arguments, state);
        if (request) {
            isOpen = true;
            say(ai.explain(*request, attended), isOpen, printAnswer);
            return;
        }
        if (arguments.json)
            print(jsonText(QJsonValue::Null) + '\n');
        printProblem(arguments.pid
                         ? QStringLiteral("swabbyctl: no program with the process id %1").arg(*arguments.pid)
                         : QStringLiteral("swabbyctl: no startup item \"%1\"").arg(*arguments.item));
        QCoreApplication::exit(notDone);
    });
    return isOpen ? printAnswer({.value = CloudAI::noExplanation(), .failure = ModelFailure::cancelled})
                  : status;
}

} // namespace swabby
