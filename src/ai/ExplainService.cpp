#include "ai/ExplainService.h"

#include "ai/KeychainStore.h"
#include "platform/posix/EnvironmentKey.h"

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
    return item.isVouchedFor() ? ActionRecommendation::keep : ActionRecommendation::quit;
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

SecretReading ExplainService::anthropicAPIKey(SecretStore &store, Unlocking unlocking, const StopToken &stop)
{
    const auto stored =
        KeychainStore::read(store, QLatin1String(KeychainStore::apiKeyAccount), unlocking, stop);
    if (stored.value && !stored.value->isEmpty())
        return stored;
    const QString fromEnvironment = QString::fromStdString(keyFromEnvironment());
    if (!fromEnvironment.isEmpty())
        return {fromEnvironment};
    return {.value = std::nullopt, .keeper = stored.keeper};
}

} // namespace swabby
