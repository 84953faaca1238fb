#include "ai/ExplainService.h"

#include "ai/KeychainStore.h"

namespace swabby {

QString ExplainRequest::id() const
{
    if (const auto *process = std::get_if<ProcessSample>(&kind))
        return QStringLiteral("p-") + QString::number(process->pid);
    return QStringLiteral("l-") + std::get<LoginItem>(kind).id();
}

ActionRecommendation recommendation(const ExplainRequest &request)
{
    if (const auto *process = std::get_if<ProcessSample>(&request.kind))
        return recommendation(*process);
    const LoginItem &item = std::get<LoginItem>(request.kind);
    if (item.isOrphaned)
        return ActionRecommendation::forceQuit;
    return item.isAppleSigned ? ActionRecommendation::keep : ActionRecommendation::quit;
}

QString recommendationLabel(ActionRecommendation recommendation)
{
    switch (recommendation) {
    case ActionRecommendation::keep:
        return QStringLiteral("Safe to Keep Running");
    case ActionRecommendation::quit:
        return QStringLiteral("Recommended: Quit");
    case ActionRecommendation::forceQuit:
        return QStringLiteral("Recommended: Force Quit");
    }
    return {};
}

std::optional<QString> ExplainService::anthropicAPIKey(SecretStore &store)
{
    const auto stored = KeychainStore::read(store, QLatin1String(KeychainStore::apiKeyAccount));
    if (stored && !stored->isEmpty())
        return stored;
    const QString fromEnvironment = qEnvironmentVariable("ANTHROPIC_API_KEY");
    return fromEnvironment.isEmpty() ? std::nullopt : std::optional(fromEnvironment);
}

} // namespace swabby
