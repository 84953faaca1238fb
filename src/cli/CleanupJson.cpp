#include "cli/CleanupJson.h"

#include "platform/Utf8.h"

namespace swabby {
namespace {

QString plainPath(const std::filesystem::path &path)
{
    return textOf(path.native());
}

QString caseName(DeepScanCategory category)
{
    switch (category) {
    case DeepScanCategory::nodeModules:
        return QStringLiteral("nodeModules");
    case DeepScanCategory::diskImage:
        return QStringLiteral("diskImage");
    case DeepScanCategory::oldDownload:
        return QStringLiteral("oldDownload");
    }
    return {};
}

QString caseName(DeveloperCleanup::DockerState state)
{
    switch (state) {
    case DeveloperCleanup::DockerState::available:
        return QStringLiteral("available");
    case DeveloperCleanup::DockerState::notInstalled:
        return QStringLiteral("notInstalled");
    case DeveloperCleanup::DockerState::notRunning:
        return QStringLiteral("notRunning");
    }
    return {};
}

qint64 bytes(std::int64_t count)
{
    return count;
}

} // namespace

QJsonObject toJson(const CacheEntry &entry)
{
    return {{QStringLiteral("path"), plainPath(entry.path)},
            {QStringLiteral("description"), entry.description},
            {QStringLiteral("sizeBytes"), bytes(entry.sizeBytes)}};
}

QJsonObject toJson(const SuggestedCache &suggestion)
{
    return {{QStringLiteral("entry"), toJson(std::get<CacheEntry>(suggestion.item.kind))},
            {QStringLiteral("looksSafe"), suggestion.looksSafe},
            {QStringLiteral("reason"), suggestion.reason}};
}

QJsonObject toJson(const DuplicateGroup &group)
{
    QJsonArray paths;
    for (const std::filesystem::path &path : group.paths)
        paths.append(plainPath(path));
    return {{QStringLiteral("name"), group.name()},
            {QStringLiteral("paths"), paths},
            {QStringLiteral("sizeBytes"), bytes(group.sizeBytes)},
            {QStringLiteral("wastedBytes"), bytes(group.wastedBytes())}};
}

QJsonObject toJson(const DeepScanItem &item)
{
    return {{QStringLiteral("path"), plainPath(item.path)},
            {QStringLiteral("category"), caseName(item.category)},
            {QStringLiteral("description"), item.description},
            {QStringLiteral("sizeBytes"), bytes(item.sizeBytes)},
            {QStringLiteral("daysOld"), bytes(item.daysOld)}};
}

QJsonObject toJson(const InstalledApp &app, bool isRunning)
{
    return {{QStringLiteral("path"), plainPath(app.path)},
            {QStringLiteral("name"), app.name},
            {QStringLiteral("bundleID"), app.bundleID},
            {QStringLiteral("sizeBytes"), bytes(app.sizeBytes)},
            {QStringLiteral("isRunning"), isRunning}};
}

QJsonObject toJson(const AppLeftover &leftover)
{
    return {{QStringLiteral("path"), plainPath(leftover.path)},
            {QStringLiteral("description"), leftover.description},
            {QStringLiteral("sizeBytes"), bytes(leftover.sizeBytes)}};
}

QJsonObject toJson(const SimulatorRuntimeInfo &runtime)
{
    return {{QStringLiteral("identifier"), runtime.identifier},
            {QStringLiteral("name"), runtime.name},
            {QStringLiteral("sizeBytes"), bytes(runtime.sizeBytes)},
            {QStringLiteral("daysSinceUsed"), runtime.daysSinceUsed
                                                  ? QJsonValue(bytes(*runtime.daysSinceUsed))
                                                  : QJsonValue(QJsonValue::Null)}};
}

QJsonObject toJson(const DockerRow &row)
{
    return {{QStringLiteral("type"), row.type}, {QStringLiteral("reclaimable"), row.reclaimable}};
}

QJsonObject toJson(const DeveloperCleanup::DockerStatus &status)
{
    return {{QStringLiteral("status"), caseName(status.state)},
            {QStringLiteral("rows"), arrayOf(status.rows)},
            {QStringLiteral("reclaimableBytes"),
             bytes(DeveloperCleanup::estimatedReclaimableBytes(status.rows))}};
}

QJsonObject toJson(const RemovableItem &item)
{
    return {{QStringLiteral("id"), item.id},
            {QStringLiteral("category"), item.category},
            {QStringLiteral("title"), item.title},
            {QStringLiteral("subtitle"), item.subtitle},
            {QStringLiteral("sizeBytes"), bytes(item.sizeBytes)},
            {QStringLiteral("kind"), caseName(item.kind)}};
}

} // namespace swabby
