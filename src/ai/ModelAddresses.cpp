#include "ai/ModelAddresses.h"

#include "platform/posix/LoopbackAddress.h"

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

bool isThisComputer(const QString &host)
{
    return host == QLatin1String("localhost") || isLoopbackAddress(qPrintable(host));
}

QUrl builtInProxy()
{
    if (isReservedForExamples(proxyHost))
        return {};
    return QUrl(QStringLiteral("https://") + proxyHost + QStringLiteral("/ai-proxy.php"), QUrl::StrictMode);
}

QUrl addressFrom(const char *variable, const QUrl &builtIn)
{
    const QString text = qEnvironmentVariable(variable);
    const QUrl address = text.isEmpty() ? builtIn : QUrl(text, QUrl::StrictMode);
    return mayBeCalled(address) ? address : QUrl();
}

} // namespace

ModelAddresses modelAddressesFromEnvironment()
{
    return {.direct = addressFrom("SWABBY_AI_DIRECT_URL", QUrl(directAddress, QUrl::StrictMode)),
            .proxy = addressFrom("SWABBY_AI_PROXY_URL", builtInProxy())};
}

bool mayBeCalled(const QUrl &address)
{
    if (!address.isValid() || address.host().isEmpty())
        return false;
    return address.scheme() == QLatin1String("https") ||
           (address.scheme() == QLatin1String("http") && isThisComputer(address.host()));
}

} // namespace swabby
