#include "ai/ModelAddresses.h"

namespace swabby {
namespace {

const QString directAddress = QStringLiteral("https://api.anthropic.com/v1/messages");
const QString proxyHost = QStringLiteral(SWABBY_PROXY_HOST);

/// Names that the domain name system sets aside for examples: nobody can be reached there, ever.
bool isReservedForExamples(const QString &host)
{
    const QString name = host.toLower();
    for (const char *domain : {"example", "example.com", "example.net", "example.org", "invalid", "test"})
        if (name == QLatin1String(domain) || name.endsWith(QLatin1Char('.') + QLatin1String(domain)))
            return true;
    return false;
}

std::optional<QUrl> builtInProxy()
{
    if (isReservedForExamples(proxyHost))
        return std::nullopt;
    return QUrl(QStringLiteral("https://") + proxyHost + QStringLiteral("/ai-proxy.php"), QUrl::StrictMode);
}

std::optional<QUrl> addressFrom(const char *variable)
{
    const QString text = qEnvironmentVariable(variable);
    return text.isEmpty() ? std::nullopt : std::optional(QUrl(text, QUrl::StrictMode));
}

} // namespace

ModelAddresses modelAddressesFromEnvironment()
{
    return {.direct = addressFrom("SWABBY_AI_DIRECT_URL"), .proxy = addressFrom("SWABBY_AI_PROXY_URL")};
}

std::optional<ModelDestination> destinationFor(ModelRoute route, const ModelAddresses &given,
                                               const QString &persons)
{
    if (const auto &address = route == ModelRoute::withKey ? given.direct : given.proxy)
        return ModelDestination{*address};
    if (!persons.isEmpty())
        return ModelDestination{QUrl(persons, QUrl::StrictMode), true};
    const auto builtIn =
        route == ModelRoute::withKey ? std::optional(QUrl(directAddress, QUrl::StrictMode)) : builtInProxy();
    return builtIn ? std::optional(ModelDestination{*builtIn}) : std::nullopt;
}

} // namespace swabby
