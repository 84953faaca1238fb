#include "ai/CloudAI.h"

#include "ai/Prompts.h"
#include "platform/HarmlessText.h"
#include "settings/Settings.h"

#include <QCoroFuture>

#include <QtCore/QDeadlineTimer>

namespace swabby {
namespace {

constexpr int shortTokens = 300; ///< for an answer in JSON
constexpr int longTokens = 400;  ///< for one in plain words
constexpr int lookupsAtOnce = 4;

/// What is shown as a sentence or a few is no longer than that, whatever the model writes.
constexpr qsizetype longestSentence = 2'000;

QString orElse(const std::optional<QString> &text, const QString &fallback)
{
    return cutTo(text.value_or(fallback), longestSentence);
}

SwabbyCheckSummary localSummary(const QStringList &findings)
{
    if (findings.isEmpty())
        return {QStringLiteral("Everything looks tidy"),
                QStringLiteral("Nothing needs your attention right now.")};
    return {QStringLiteral("A few things worth doing"),
            findings.join(QStringLiteral(". ")) + QLatin1Char('.')};
}

/// Where a request goes, with which key and to which model, or why nowhere.
struct Route {
    ModelDestination to = {};
    QByteArray key = {};
    QString model = {};
    std::optional<ModelFailure> failure = std::nullopt;
};

/// May wait for the secret store.
Route chooseRoute(Machine &machine, const ModelAddresses &addresses, const Asking &asking)
{
    const Settings settings(*machine.settings);
    if (!settings.problem().isEmpty())
        return {.failure = ModelFailure::unsettled};
    if (!settings.value(setting<"aiEnabled">))
        return {.failure = ModelFailure::switchedOff};
    const SecretReading key =
        ExplainService::anthropicAPIKey(*machine.secrets, asking.unlocking, asking.stop);
    // The person has a key, or may have: the question does not go another way behind its back.
    if (!key.value && key.keeper != SecretReading::Keeper::open)
        return {.failure = ModelFailure::storeLocked};
    const auto to = destinationFor(key.value ? ModelRoute::withKey : ModelRoute::withoutKey, addresses,
                                   settings.value(setting<"aiAddress">));
    if (!to)
        return {.failure = ModelFailure::noAssistant};
    const QString model = settings.value(setting<"aiModel">);
    return {.to = *to,
            .key = key.value.value_or(QString()).toUtf8(),
            .model = model.isEmpty() ? QLatin1String(builtInModel) : model};
}

} // namespace

CloudAI::CloudAI(std::shared_ptr<Machine> machine, ModelAddresses addresses,
                 std::chrono::milliseconds patience)
    : m_machine(std::move(machine)),
      m_addresses(std::move(addresses)),
      m_patience(patience),
      m_connection(std::make_shared<ModelConnection>()),
      m_lookups(lookupsAtOnce, Urgency::isWaitedFor)
{
}

// The awaited work outlives this when the program ends meanwhile, so nothing of it is touched after a wait.
QCoro::Task<Answered<std::optional<QString>>> CloudAI::respond(QString system, QString prompt, int maxTokens,
                                                               Asking asking)
{
    const QDeadlineTimer end(m_patience);
    const auto connection = std::weak_ptr(m_connection);
    const auto chosen = m_lookups.ask([machine = m_machine, addresses = m_addresses, asking] {
        return chooseRoute(*machine, addresses, asking);
    });
    const Route route = co_await chosen;
    Answered<std::optional<QString>> answer = {.value = std::nullopt, .failure = route.failure};
    auto open = connection.lock();
    if (!open || asking.stop.stopRequested())
        answer.failure = ModelFailure::cancelled;
    if (answer.failure)
        co_return answer;
    const auto sent = open->post({.address = route.to.address,
                                  .key = route.key,
                                  .body = messagesRequest(route.model, system, prompt, maxTokens),
                                  .time = std::chrono::milliseconds(end.remainingTime())},
                                 asking.stop);
    open.reset();
    const ModelResponse response = co_await sent;
    answer.wasSent = response.wasSent;
    answer.failure = response.failure;
    answer.host = route.to.isPersons ? route.to.address.host() : QString();
    if (answer.failure == ModelFailure::offline && route.to.isPersons)
        answer.failure = ModelFailure::ownOffline;
    if (response.body)
        answer.value = messagesReplyText(*response.body);
    if (!answer.value && !answer.failure)
        answer.failure = ModelFailure::unreadable;
    co_return answer;
}

QCoro::Task<Answered<QString>> CloudAI::explain(ExplainRequest request, Asking asking)
{
    const MachineWords words = m_machine->words;
    const auto *process = std::get_if<ProcessSample>(&request.kind);
    const QString prompt = process ? Prompts::explainProcess(words, *process)
                                   : Prompts::explainLoginItem(words, std::get<LoginItem>(request.kind));
    const auto answer = co_await respond(Prompts::explainInstructions(words), prompt, longTokens, asking);
    co_return answer.with(orElse(answer.value, noExplanation()));
}

QCoro::Task<Answered<QString>> CloudAI::weeklySummary(QString freedText, qint64 attentionCount)
{
    const QString fallback =
        QStringLiteral("Swabby kept an eye on your %1 this week.").arg(m_machine->words.computer);
    const auto answer = co_await respond(Prompts::weeklySummaryInstructions(),
                                         Prompts::weeklySummary(freedText, attentionCount), longTokens);
    co_return answer.with(orElse(answer.value, fallback));
}

QCoro::Task<Answered<AskAnswer>> CloudAI::ask(QString question, QString systemContext, Asking asking)
{
    const MachineWords words = m_machine->words;
    const auto answer = co_await respondJSON<AskAnswer>(
        Prompts::askInstructions(words), Prompts::ask(words, question, systemContext), shortTokens, asking);
    AskAnswer said = answer.value.value_or(noAnswer());
    said.explanation = cutTo(said.explanation, longestSentence);
    said.appToQuit = cutTo(words.unmarked(said.appToQuit), longestSentence);
    co_return answer.with(said);
}

QCoro::Task<Answered<SwabbyCheckSummary>> CloudAI::swabbyCheckSummary(qint64 itemCount,
                                                                      QString totalBytesText,
                                                                      std::optional<QString> topProcessName,
                                                                      qint64 loginItemCount, Asking asking)
{
    const MachineWords words = m_machine->words;
    const QStringList findings =
        Prompts::checkFindings(words, itemCount, totalBytesText, topProcessName, loginItemCount);
    const auto answer = co_await respondJSON<SwabbyCheckSummary>(
        Prompts::checkInstructions(words), Prompts::checkSummary(words, findings), shortTokens, asking);
    SwabbyCheckSummary said = answer.value.value_or(localSummary(findings));
    said.headline = cutTo(said.headline, longestSentence);
    said.summary = cutTo(said.summary, longestSentence);
    co_return answer.with(said);
}

QCoro::Task<Answered<CacheAssessment>> CloudAI::assessCacheFolder(QString name, QString sizeText,
                                                                  Asking asking)
{
    const MachineWords words = m_machine->words;
    const auto answer = co_await respondJSON<CacheAssessment>(
        Prompts::cacheInstructions(words), Prompts::cacheFolder(words, name, sizeText), shortTokens, asking);
    CacheAssessment said = answer.value.value_or(
        CacheAssessment{false, QStringLiteral("Couldn't check this one — skipping to be safe.")});
    said.reason = cutTo(said.reason, longestSentence);
    co_return answer.with(said);
}

AskAnswer CloudAI::noAnswer()
{
    return {QString(), QStringLiteral("Couldn't come up with an answer right now.")};
}

QString CloudAI::noExplanation()
{
    return QStringLiteral("Couldn't get an explanation right now.");
}

QCoro::Task<std::optional<ModelFailure>> CloudAI::tryOut()
{
    const auto answer =
        co_await respond(QStringLiteral("Answer with one word."), QStringLiteral("Hello"), longTokens);
    co_return answer.failure;
}

} // namespace swabby
