#include "cli/StateJson.h"

#include "state/MenuBarTitle.h"

#include <QtCore/QJsonDocument>

#include <limits>

namespace swabby {

QString caseName(ActionRecommendation recommendation)
{
    switch (recommendation) {
    case ActionRecommendation::keep:
        return QStringLiteral("keep");
    case ActionRecommendation::quit:
        return QStringLiteral("quit");
    case ActionRecommendation::forceQuit:
        return QStringLiteral("forceQuit");
    }
    return {};
}

namespace {

QString caseName(HealthLevel level)
{
    switch (level) {
    case HealthLevel::green:
        return QStringLiteral("green");
    case HealthLevel::yellow:
        return QStringLiteral("yellow");
    case HealthLevel::red:
        return QStringLiteral("red");
    }
    return {};
}

QString caseName(TitleColor color)
{
    switch (color) {
    case TitleColor::green:
        return QStringLiteral("green");
    case TitleColor::yellow:
        return QStringLiteral("yellow");
    case TitleColor::red:
        return QStringLiteral("red");
    }
    return {};
}

QString caseName(ThermalState state)
{
    switch (state) {
    case ThermalState::nominal:
        return QStringLiteral("nominal");
    case ThermalState::fair:
        return QStringLiteral("fair");
    case ThermalState::serious:
        return QStringLiteral("serious");
    case ThermalState::critical:
        return QStringLiteral("critical");
    }
    return {};
}

QString caseName(LoginItemScope scope)
{
    switch (scope) {
    case LoginItemScope::userAgent:
        return QStringLiteral("userAgent");
    case LoginItemScope::globalAgent:
        return QStringLiteral("globalAgent");
    case LoginItemScope::globalDaemon:
        return QStringLiteral("globalDaemon");
    case LoginItemScope::classicLoginItem:
        return QStringLiteral("classicLoginItem");
    }
    return {};
}

QJsonValue bytesJson(std::uint64_t bytes)
{
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<qint64>::max());
    return static_cast<qint64>(std::min(bytes, most));
}

QJsonValue bytesJson(std::int64_t bytes)
{
    return static_cast<qint64>(bytes);
}

template <typename Value>
QJsonValue optionalJson(const std::optional<Value> &value)
{
    return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null);
}

QJsonObject toJson(const SystemStats &stats)
{
    return {{QStringLiteral("timestamp"), stats.timestamp},
            {QStringLiteral("cpuUsagePercent"), stats.cpuUsagePercent},
            {QStringLiteral("memUsedBytes"), bytesJson(stats.memUsedBytes)},
            {QStringLiteral("memTotalBytes"), bytesJson(stats.memTotalBytes)},
            {QStringLiteral("memPressurePercent"), stats.memPressurePercent},
            {QStringLiteral("swapUsedBytes"), bytesJson(stats.swapUsedBytes)},
            {QStringLiteral("diskFreeBytes"), bytesJson(stats.diskFreeBytes)},
            {QStringLiteral("diskTotalBytes"), bytesJson(stats.diskTotalBytes)},
            {QStringLiteral("batteryPercent"), optionalJson(stats.batteryPercent)},
            {QStringLiteral("isCharging"), stats.isCharging},
            {QStringLiteral("timeRemainingMinutes"), optionalJson(stats.timeRemainingMinutes)},
            {QStringLiteral("batteryCycleCount"), optionalJson(stats.batteryCycleCount)},
            {QStringLiteral("batteryHealthPercent"), optionalJson(stats.batteryHealthPercent)},
            {QStringLiteral("thermalState"), caseName(stats.thermalState)}};
}

QJsonObject toJson(const BrowserRollupEntry &entry)
{
    return {{QStringLiteral("browserName"), entry.browserName},
            {QStringLiteral("processCount"), entry.processCount},
            {QStringLiteral("totalMemBytes"), bytesJson(entry.totalMemBytes)},
            {QStringLiteral("totalCPUPercent"), entry.totalCPUPercent}};
}

QJsonObject toJson(const HistoryPoint &point)
{
    return {{QStringLiteral("date"), point.date},
            {QStringLiteral("cpu"), point.cpu},
            {QStringLiteral("mem"), point.mem}};
}

QJsonObject toJson(const LeakSuspect &suspect)
{
    return {{QStringLiteral("pid"), suspect.pid},
            {QStringLiteral("name"), suspect.name},
            {QStringLiteral("growthMB"), suspect.growthMB},
            {QStringLiteral("minutesTracked"), suspect.minutesTracked}};
}

QJsonValue actionJson(const std::optional<HealthIssueAction> &action)
{
    if (!action)
        return QJsonValue::Null;
    if (const auto *kill = std::get_if<KillProcess>(&*action))
        return QJsonObject{{QStringLiteral("killProcess"), kill->process.pid}};
    return QJsonObject{{QStringLiteral("openSection"), sectionName(std::get<OpenSection>(*action).section)}};
}

QJsonObject toJson(const HealthIssue &issue)
{
    return {{QStringLiteral("level"), caseName(issue.level)},
            {QStringLiteral("section"), sectionName(issue.section)},
            {QStringLiteral("what"), issue.what},
            {QStringLiteral("why"), issue.why},
            {QStringLiteral("how"), issue.how},
            {QStringLiteral("action"), actionJson(issue.action)}};
}

QJsonObject toJson(const Notification &notification)
{
    return {{QStringLiteral("title"), notification.title}, {QStringLiteral("body"), notification.body}};
}

template <typename Record>
QJsonArray listJson(const QList<Record> &records)
{
    QJsonArray list;
    for (const Record &record : records)
        list.append(toJson(record));
    return list;
}

} // namespace

QJsonObject toJson(const ProcessSample &process)
{
    return {{QStringLiteral("pid"), process.pid},
            {QStringLiteral("name"), process.name},
            {QStringLiteral("path"), process.path},
            {QStringLiteral("cpuPercent"), process.cpuPercent},
            {QStringLiteral("memPercent"), process.memPercent},
            {QStringLiteral("rssBytes"), bytesJson(process.rssBytes)},
            {QStringLiteral("isApp"), process.isApp},
            {QStringLiteral("energyImpact"), process.energyImpact},
            {QStringLiteral("networkBytesPerSec"), bytesJson(process.networkBytesPerSec)},
            {QStringLiteral("trustRatio"), process.trustRatio()},
            {QStringLiteral("recommendation"), caseName(recommendation(process))}};
}

QJsonObject toJson(const LoginItem &item)
{
    return {{QStringLiteral("id"), item.id()},
            {QStringLiteral("label"), item.label},
            {QStringLiteral("plistPath"), item.plistPath},
            {QStringLiteral("programPath"), item.programPath},
            {QStringLiteral("scope"), caseName(item.scope)},
            {QStringLiteral("isLoaded"), item.isLoaded},
            {QStringLiteral("isOrphaned"), item.isOrphaned},
            {QStringLiteral("isAppleSigned"), item.isAppleSigned},
            {QStringLiteral("canDisableInPlace"), item.canDisableInPlace},
            {QStringLiteral("bootDelaySeconds"), optionalJson(item.bootDelaySeconds)}};
}

QJsonObject toJson(const AppState &state, const QList<Notification> &notifications)
{
    const MenuBarTitle title = menuBarTitle(state.stats().cpuUsagePercent, state.health());
    return {{QStringLiteral("stats"), toJson(state.stats())},
            {QStringLiteral("processes"), listJson(state.processes())},
            {QStringLiteral("batteryDrainers"), listJson(state.batteryDrainers())},
            {QStringLiteral("networkUsers"), listJson(state.networkUsers())},
            {QStringLiteral("browserRollups"), listJson(state.browserRollups())},
            {QStringLiteral("loginItems"), listJson(state.loginItems())},
            {QStringLiteral("history"), listJson(state.history())},
            {QStringLiteral("health"), caseName(state.health())},
            {QStringLiteral("healthIssues"), listJson(state.healthIssues())},
            {QStringLiteral("leakSuspects"), listJson(state.leakSuspects())},
            {QStringLiteral("pinnedNames"), toJson(state.pinnedNames())},
            {QStringLiteral("menuBar"), QJsonObject{{QStringLiteral("text"), title.text},
                                                    {QStringLiteral("color"), caseName(title.color)}}},
            {QStringLiteral("notifications"), listJson(notifications)}};
}

QJsonArray toJson(const History &history)
{
    return listJson(history);
}

QJsonArray toJson(const QList<LoginItem> &items)
{
    return listJson(items);
}

QJsonArray toJson(const std::set<QString> &names)
{
    QJsonArray array;
    for (const QString &name : names)
        array.append(name);
    return array;
}

QByteArray jsonText(const QJsonValue &value)
{
    // A document holds objects and arrays only, so anything else is taken out of an array again.
    const QByteArray wrapped = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return wrapped.mid(1, wrapped.size() - 2);
}

} // namespace swabby
