#include "cleanup/RemovableItem.h"

#include "platform/Utf8.h"

#include <QtCore/QUuid>

namespace swabby {
namespace {

/// Bytes that are no text are written out, so that no two paths become one key.
QString keyOf(const std::filesystem::path &path)
{
    const std::string &bytes = path.native();
    if (isUtf8(bytes))
        return textOf(bytes);
    return QString::fromLatin1(QByteArray::fromStdString(bytes).toPercentEncoding("/ "));
}

QString developerCleanup()
{
    return QStringLiteral("Developer Cleanup");
}

} // namespace

QString labelOf(DeepScanCategory category)
{
    switch (category) {
    case DeepScanCategory::nodeModules:
        return QStringLiteral("Old project (node_modules)");
    case DeepScanCategory::diskImage:
        return QStringLiteral("Old installer file");
    case DeepScanCategory::oldDownload:
        return QStringLiteral("Forgotten download");
    }
    return {};
}

QString caseName(const RemovableItemKind &kind)
{
    constexpr const char *names[] = {"cache",        "duplicateGroup", "simulatorRuntime", "deepScanItem",
                                     "appUninstall", "derivedData",    "dockerPrune"};
    static_assert(std::size(names) == std::variant_size_v<RemovableItemKind>);
    return QString::fromLatin1(names[kind.index()]);
}

RemovableItem RemovableItem::fromCache(const CacheEntry &entry)
{
    return {.id = QStringLiteral("cache:") + keyOf(entry.path),
            .category = QStringLiteral("Quick Clean"),
            .title = entry.description,
            .subtitle = QStringLiteral("Regenerates automatically"),
            .sizeBytes = entry.sizeBytes,
            .kind = entry};
}

RemovableItem RemovableItem::fromDuplicate(const DuplicateGroup &group)
{
    const QString key = group.paths.empty() ? QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper()
                                            : keyOf(group.paths.front());
    return {.id = QStringLiteral("dup:") + key,
            .category = QStringLiteral("Duplicate Finder"),
            .title = group.name() + QStringLiteral(" \u00D7") + QString::number(group.paths.size()),
            .subtitle = QStringLiteral("Keeps one copy, moves the rest to Trash"),
            .sizeBytes = group.wastedBytes(),
            .kind = group};
}

RemovableItem RemovableItem::fromSimulator(const SimulatorRuntimeInfo &runtime)
{
    return {.id = QStringLiteral("sim:") + runtime.identifier,
            .category = developerCleanup(),
            .title = runtime.name,
            .subtitle = runtime.daysSinceUsed
                            ? QStringLiteral("Last used %1 days ago").arg(*runtime.daysSinceUsed)
                            : QStringLiteral("Never used"),
            .sizeBytes = runtime.sizeBytes,
            .kind = runtime};
}

RemovableItem RemovableItem::fromDeepScan(const DeepScanItem &item)
{
    return {.id = QStringLiteral("deep:") + keyOf(item.path),
            .category = QStringLiteral("Deep Scan"),
            .title = item.description,
            .subtitle = QStringLiteral("%1 \u00B7 untouched for %2 days \u00B7 moved to Trash")
                            .arg(labelOf(item.category), QString::number(item.daysOld)),
            .sizeBytes = item.sizeBytes,
            .kind = item};
}

RemovableItem RemovableItem::fromAppUninstall(const InstalledApp &app,
                                              const std::vector<AppLeftover> &leftovers)
{
    std::int64_t size = app.sizeBytes;
    for (const AppLeftover &leftover : leftovers)
        size = saturatedSum(size, leftover.sizeBytes);
    const QString subtitle = leftovers.empty()
                                 ? QStringLiteral("Moves the app to Trash")
                                 : QStringLiteral("Moves the app and %1 related file%2 to Trash")
                                       .arg(QString::number(leftovers.size()),
                                            leftovers.size() == 1 ? QString() : QStringLiteral("s"));
    return {.id = QStringLiteral("app:") + app.bundleID,
            .category = QStringLiteral("App Uninstaller"),
            .title = app.name,
            .subtitle = subtitle,
            .sizeBytes = size,
            .kind = AppUninstall{app, leftovers}};
}

RemovableItem RemovableItem::derivedData(std::int64_t sizeBytes)
{
    return {.id = QStringLiteral("derived-data"),
            .category = developerCleanup(),
            .title = QStringLiteral("Xcode build cache"),
            .subtitle = QStringLiteral("Rebuilds automatically next time you build"),
            .sizeBytes = sizeBytes,
            .kind = DerivedData()};
}

RemovableItem RemovableItem::dockerPrune(std::int64_t reclaimableBytes)
{
    return {.id = QStringLiteral("docker-prune"),
            .category = developerCleanup(),
            .title = QStringLiteral("Docker cleanup"),
            .subtitle = QStringLiteral("Unused images, stopped containers, build cache"),
            .sizeBytes = reclaimableBytes,
            .kind = DockerPrune()};
}

} // namespace swabby
