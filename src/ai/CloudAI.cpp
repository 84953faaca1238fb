#include "ai/CloudAI.h"

#include "ai/Prompts.h"
#include "settings/Settings.h"

#include <QCoroFuture>

namespace swabby {
namespace {

constexpr int shortTokens = 300; ///< for an answer in JSON
constexpr int longTokens = 400;  ///< for one in plain words
constexpr int lookupsAtOnce = 4;

QString orElse(const std::optional<QString> &text, const QString &fallback)
{
    return text.value_or(fallback);
}

SwabbyCheckSummary localSummary(const QStringList &findings)
{
    if (findings.isEmpty())
        return {QStringLiteral("Everything looks tidy"),
                QStringLiteral("Nothing needs your attention right now.")};
    return {QStringLiteral("A few things worth doing"),
            findings.join(QStringLiteral(". ")) + QLatin1Char('.')};
}

} // namespace

/// Where a request goes, and with which key.
struct CloudAI::Route {
    QUrl address; ///< invalid: nowhere
    QByteArray key;
    bool isSwitchedOff = false;
};

CloudAI::CloudAI(std::shared_ptr<Machine> machine, ModelAddresses addresses, ModelConnection::Limits limits)
    : m_machine(std::move(machine)),
      m_addresses(std::move(addresses)),
      m_connection(std::make_shared<ModelConnection>(limits)),
      m_lookups(lookupsAtOnce)
{
}

CloudAI::Route CloudAI::chooseRoute(Machine &machine, const ModelAddresses &addresses)
{
    if (!Settings(*machine.settings).value(setting<"aiEnabled">))
        return {.address = {}, .key = {}, .isSwitchedOff = true};
    if (const auto key = ExplainService::anthropicAPIKey(*machine.secrets))
        return {.address = addresses.direct, .key = key->toUtf8()};
    return {.address = addresses.proxy, .key = {}};
}

// The awaited work outlives this when the program ends meanwhile, so nothing of it is touched after a wait.
QCoro::Task<Answered<std::optional<QString>>> CloudAI::respond(QString system, QString prompt, int maxTokens)
{
    const auto connection = std::weak_ptr(m_connection);
    const auto chosen = m_lookups.ask(
        [machine = m_machine, addresses = m_addresses] { return chooseRoute(*machine, addresses); });
    const Route route = co_await chosen;
    auto open = connection.lock();
    if (!open || route.isSwitchedOff)
        co_return {.value = std::nullopt, .isSwitchedOff = route.isSwitchedOff};
    if (!route.address.isValid()) {
        const bool wantsKey = route.key.isEmpty() && !m_hasAskedForKey;
        m_hasAskedForKey = m_hasAskedForKey || wantsKey;
        co_return {.value = std::nullopt, .wasSent = false, .wantsKey = wantsKey};
    }
    const auto sent = open->post({route.address, route.key, messagesRequest(system, prompt, maxTokens)});
    open.reset();
    const ModelResponse response = co_await sent;
    std::optional<QString> text;
    if (response.body)
        text = messagesReplyText(*response.body);
    co_return {.value = std::move(text), .wasSent = response.wasSent};
}

QCoro::Task<Answered<QString>> CloudAI::explain(ExplainRequest request)
{
    const auto *process = std::get_if<ProcessSample>(&request.kind);
    const QString prompt = process ? Prompts::explainProcess(process->name, process->path,
                                                             process->cpuPercent, process->memPercent)
                                   : Prompts::explainLoginItem(std::get<LoginItem>(request.kind));
    const auto answer = co_await respond(Prompts::explainInstructions(), prompt, longTokens);
    co_return answer.with(orElse(answer.value, QStringLiteral("Couldn't get an explanation right now.")));
}

QCoro::Task<Answered<QString>> CloudAI::weeklySummary(QString freedText, qint64 attentionCount)
{
    const auto answer = co_await respond(Prompts::weeklySummaryInstructions(),
                                         Prompts::weeklySummary(freedText, attentionCount), longTokens);
    co_return answer.with(orElse(answer.value, QStringLiteral("Swabby kept an eye on your Mac this week.")));
}

QCoro::Task<Answered<AskAnswer>> CloudAI::ask(QString question, QString systemContext)
{
    const auto answer = co_await respondJSON<AskAnswer>(Prompts::askInstructions(),
                                                        Prompts::ask(question, systemContext), shortTokens);
    co_return answer.with(answer.value.value_or(
        AskAnswer{QString(), QStringLiteral("Couldn't come up with an answer right now.")}));
}

QCoro::Task<Answered<SwabbyCheckSummary>> CloudAI::swabbyCheckSummary(qint64 itemCount,
                                                                      QString totalBytesText,
                                                                      std::optional<QString> topProcessName,
                                                                      qint64 loginItemCount)
{
    const QStringList findings =
        Prompts::checkFindings(itemCount, totalBytesText, topProcessName, loginItemCount);
    const auto answer = co_await respondJSON<SwabbyCheckSummary>(
        Prompts::checkInstructions(), Prompts::checkSummary(findings), shortTokens);
    co_return answer.with(answer.value.value_or(localSummary(findings)));
}

QCoro::Task<Answered<CacheAssessment>> CloudAI::assessCacheFolder(QString name, QString sizeText)
{
    const auto answer = co_await respondJSON<CacheAssessment>(
        Prompts::cacheInstructions(), Prompts::cacheFolder(name, sizeText), shortTokens);
    co_return answer.with(answer.value.value_or(
        CacheAssessment{false, QStringLiteral("Couldn't check this one — skipping to be safe.")}));
}

} // namespace swabby
