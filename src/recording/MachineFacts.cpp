#include "recording/MachineFacts.h"

#include "platform/FolderListing.h"
#include "platform/Utf8.h"
#include "platform/mactools/MacCleanupPlaces.h"
#include "recording/FolderWriter.h"
#include "settings/Settings.h"

#include <QtCore/QJsonArray>

#include <algorithm>

namespace swabby {
namespace {

QJsonValue json(std::uint64_t number)
{
    return static_cast<qint64>(number);
}

QJsonArray json(const CpuTicks &ticks)
{
    return {json(ticks.user), json(ticks.system), json(ticks.idle), json(ticks.nice)};
}

QString caseName(ThermalState state)
{
    constexpr const char *names[] = {"nominal", "fair", "serious", "critical"};
    return QLatin1String(names[static_cast<std::size_t>(state)]);
}

QJsonObject powerOf(const PowerSource &source)
{
    QJsonObject power;
    const auto insert = [&](const char *key, const auto &value) {
        if (value)
            power.insert(QLatin1String(key), *value);
    };
    insert("Current Capacity", source.currentCapacity);
    insert("Is Charging", source.isCharging);
    insert("Time to Empty", source.timeToEmpty);
    insert("Time to Full Charge", source.timeToFullCharge);
    return power;
}

void addCaches(QJsonObject &facts, const CleanupPlaces &places, const std::vector<RemovableItem> &found,
               Rewriting &rewriting)
{
    const CleanupPlaces macs = macCleanupPlaces(places.home, places.root);
    const auto below = [&](const std::filesystem::path &path) {
        return textOf(rewriting.path(path)).mid(static_cast<qsizetype>(placeIn("home/").size()));
    };
    if (places.cachesRoot != macs.cachesRoot && isUnder(places.cachesRoot, places.home))
        facts.insert(QStringLiteral("cachesFolder"), below(places.cachesRoot));
    QJsonArray caches;
    for (const RemovableItem &item : found) {
        const auto *const cache = std::get_if<CacheEntry>(&item.kind);
        // An unfamiliar one lies directly in the folder of caches and is called what it is described as.
        const bool isKnown = cache && cache->path != places.trash &&
                             (cache->path.parent_path() != places.cachesRoot ||
                              cache->description != textOf(cache->path.filename().native()));
        if (!isKnown || !isUnder(cache->path, places.home) ||
            std::ranges::count(macs.knownCaches, cache->path, &KnownCache::path) > 0)
            continue;
        const QString sandbox = textOf(cache->path.parent_path().filename().native());
        caches.append(QJsonObject{{QStringLiteral("path"), below(cache->path)},
                                  {QStringLiteral("description"),
                                   QString(cache->description)
                                       .replace(QStringLiteral("(%1)").arg(sandbox),
                                                QStringLiteral("(%1)").arg(rewriting.name(sandbox)))}});
    }
    if (!caches.isEmpty())
        facts.insert(QStringLiteral("knownCaches"), caches);
}

} // namespace

QJsonObject machineFacts(const Heard &heard, Machine &machine, const std::vector<RemovableItem> &found,
                         Rewriting &rewriting)
{
    QJsonObject facts = {
        {QStringLiteral("now"), machine.clock->now()},
        {QStringLiteral("userID"), static_cast<qint64>(machine.places.userId)},
        {QStringLiteral("ownProcessID"), machine.ownProcessId},
        {QStringLiteral("disk"),
         QJsonObject{{QStringLiteral("freeBytes"), static_cast<qint64>(heard.volume.freeBytes)},
                     {QStringLiteral("totalBytes"), static_cast<qint64>(heard.volume.totalBytes)}}}};
    QJsonArray ticks;
    for (const CpuTicks &sample : heard.ticks)
        ticks.append(json(sample));
    if (!ticks.isEmpty())
        facts.insert(QStringLiteral("cpuTicks"), ticks);
    if (heard.ticksAtStart)
        facts.insert(QStringLiteral("cpuTicksAtStart"), json(*heard.ticksAtStart));
    if (heard.pages)
        facts.insert(QStringLiteral("memory"),
                     QJsonObject{{QStringLiteral("pageSize"), json(heard.pages->pageSize)},
                                 {QStringLiteral("activePages"), json(heard.pages->active)},
                                 {QStringLiteral("wiredPages"), json(heard.pages->wired)},
                                 {QStringLiteral("compressorPages"), json(heard.pages->compressed)},
                                 {QStringLiteral("physicalBytes"), json(heard.physicalBytes)},
                                 {QStringLiteral("swapUsedBytes"), json(heard.swapUsedBytes)}});
    QJsonArray states;
    for (const ThermalState state : heard.thermal)
        states.append(caseName(state));
    facts.insert(QStringLiteral("thermalState"), states);
    if (heard.power)
        facts.insert(QStringLiteral("powerSource"), powerOf(*heard.power));
    QJsonArray running;
    for (const RunningApplication &application : machine.runningApplications->list())
        running.append(QJsonObject{{QStringLiteral("pid"), application.pid},
                                   {QStringLiteral("bundleID"), rewriting.name(application.bundleId)}});
    facts.insert(QStringLiteral("runningApplications"), running);
    QJsonArray notAllowed;
    for (const Permission permission : machine.permissions->refused())
        notAllowed.append(QLatin1String(permissionNames[static_cast<std::size_t>(permission)]));
    if (!notAllowed.isEmpty())
        facts.insert(QStringLiteral("notAllowed"), notAllowed);
    addCaches(facts, machine.cleanup, found, rewriting);
    return facts;
}

QJsonObject settingsOf(const Machine &machine, Rewriting &rewriting)
{
    const Settings settings(*machine.settings);
    QJsonObject kept;
    const auto keep = [&](const SettingKey &key) {
        const bool isSpoken = key.type == SettingKey::Type::text || key.type == SettingKey::Type::textList;
        const QJsonValue value = settings.stored(key);
        if (!value.isUndefined() && !value.isNull() && (!isSpoken || key.words.front() != nullptr))
            kept.insert(QLatin1String(key.name), value);
    };
    std::apply([&](const auto &...key) { (keep(key), ...); }, settingTable);
    QJsonArray pinned;
    for (const QString &name : settings.value(setting<"pinnedProcessNames">))
        pinned.append(rewriting.command(name)); // as the lists of processes name it
    if (!pinned.isEmpty())
        kept.insert(QLatin1String(setting<"pinnedProcessNames">.name), pinned);
    return kept;
}

} // namespace swabby
