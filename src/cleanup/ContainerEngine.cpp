#include "cleanup/ContainerEngine.h"

#include "platform/posix/SmallFile.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace swabby {
namespace {

constexpr auto usualAddress = "unix:///var/run/docker.sock";
constexpr std::int64_t largestFile = 1 << 20;

std::string addressOf(const ContainerSettings &settings)
{
    if (!settings.host.empty())
        return settings.host;
    std::string context = settings.context;
    if (context.empty())
        context = currentContext(smallFile(settings.folder / "config.json", largestFile));
    if (context.empty() || context == "default")
        return usualAddress;
    const QByteArray folder =
        QCryptographicHash::hash(QByteArray::fromStdString(context), QCryptographicHash::Sha256).toHex();
    return engineAddress(
        smallFile(settings.folder / "contexts/meta" / folder.toStdString() / "meta.json", largestFile));
}

} // namespace

std::optional<std::string> localContainerEngine(const ContainerSettings &settings)
{
    const std::string address = addressOf(settings);
    return address.starts_with("unix:///") ? std::optional(address) : std::nullopt;
}

std::string currentContext(const QByteArray &json)
{
    return QJsonDocument::fromJson(json)[QLatin1String("currentContext")].toString().toStdString();
}

std::string engineAddress(const QByteArray &json)
{
    return QJsonDocument::fromJson(
               json)[QLatin1String("Endpoints")][QLatin1String("docker")][QLatin1String("Host")]
        .toString()
        .toStdString();
}

} // namespace swabby
