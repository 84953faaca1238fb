#include "settings/Settings.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <algorithm>
#include <cmath>

namespace swabby {
namespace {

using Type = Settings::Type;

const QString compactDensity = QStringLiteral("compact");
const QString comfortableDensity = QStringLiteral("comfortable");

const Settings::Key &keyNamed(const char *name)
{
    return *Settings::find(QLatin1String(name));
}

bool isTextList(const QJsonValue &value)
{
    const QJsonArray list = value.toArray();
    return value.isArray() && std::all_of(list.begin(), list.end(),
                                          [](const QJsonValue &element) { return element.isString(); });
}

/// A path from nowhere in particular would protect nothing.
bool areAbsolutePaths(const QJsonArray &paths)
{
    return std::all_of(paths.begin(), paths.end(),
                       [](const QJsonValue &path) { return path.toString().startsWith(QLatin1Char('/')); });
}

/// The value read as the given type, as a person's preferences are read: a switch stored as a number still
/// counts. Undefined when it cannot be.
QJsonValue readAs(Type type, const QJsonValue &value)
{
    const bool isNumeric = value.isDouble() || value.isBool();
    const double number = value.isBool() ? static_cast<double>(value.toBool()) : value.toDouble();
    switch (type) {
    case Type::number:
        return isNumeric ? QJsonValue(number) : QJsonValue(QJsonValue::Undefined);
    case Type::integer: {
        constexpr double limit = 0x1p63;
        const qint64 truncated = std::abs(number) < limit ? static_cast<qint64>(number) : 0;
        return isNumeric ? QJsonValue(value.toInteger(truncated)) : QJsonValue(QJsonValue::Undefined);
    }
    case Type::boolean:
        return isNumeric ? QJsonValue(number != 0) : QJsonValue(QJsonValue::Undefined);
    case Type::text:
        return value.isString() ? value : QJsonValue(QJsonValue::Undefined);
    case Type::date:
        return value.isDouble() ? value : QJsonValue(QJsonValue::Undefined);
    case Type::textList:
        return isTextList(value) ? value : QJsonValue(QJsonValue::Undefined);
    }
    return QJsonValue::Undefined;
}

} // namespace

const std::vector<Settings::Key> &Settings::keys()
{
    static const std::vector<Key> all = {
        {QStringLiteral("cpuYellow"), Type::number, 60},
        {QStringLiteral("cpuRed"), Type::number, 85},
        {QStringLiteral("memYellow"), Type::number, 75},
        {QStringLiteral("memRed"), Type::number, 90},
        {QStringLiteral("processCpuRed"), Type::number, 80},
        {QStringLiteral("notifyOnRed"), Type::boolean, true},
        {QStringLiteral("notifyOnStorage"), Type::boolean, true},
        {QStringLiteral("storageNotifyThresholdGB"), Type::number, 2},
        {QStringLiteral("showInDock"), Type::boolean, true},
        {QStringLiteral("rowDensity"), Type::text, comfortableDensity},
        {QStringLiteral("lastWeeklySummaryDate"), Type::date, QJsonValue::Null},
        {QStringLiteral("lastStorageNotifyCheckDate"), Type::date, QJsonValue::Null},
        {QStringLiteral("hasCompletedOnboarding"), Type::boolean, false},
        {QStringLiteral("pinnedProcessNames"), Type::textList, QJsonArray()},
        {QStringLiteral("weeklyAttentionCount"), Type::integer, 0},
        {QStringLiteral("weeklyBytesFreed"), Type::integer, 0},
        {QStringLiteral("aiEnabled"), Type::boolean, true},
        {QStringLiteral("neverRemove"), Type::textList, QJsonArray()},
    };
    return all;
}

const Settings::Key *Settings::find(const QString &name)
{
    const auto &all = keys();
    const auto key =
        std::find_if(all.begin(), all.end(), [&](const Key &known) { return known.name == name; });
    return key == all.end() ? nullptr : &*key;
}

QJsonValue Settings::effective(const Key &key) const
{
    const QJsonValue value = readAs(key.type, stored(key));
    const bool isOtherWord = key.type == Type::text && value != comfortableDensity && value != compactDensity;
    return value.isUndefined() || isOtherWord ? key.defaultValue : value;
}

QJsonValue Settings::parse(const Key &key, const QString &text)
{
    bool parsed = false;
    switch (key.type) {
    case Type::number:
    case Type::date: {
        const double number = text.toDouble(&parsed);
        return parsed && std::isfinite(number) ? QJsonValue(number) : QJsonValue(QJsonValue::Undefined);
    }
    case Type::integer: {
        const qint64 number = text.toLongLong(&parsed);
        return parsed ? QJsonValue(number) : QJsonValue(QJsonValue::Undefined);
    }
    case Type::boolean:
        if (text == QLatin1String("true") || text == QLatin1String("false"))
            return text == QLatin1String("true");
        return QJsonValue::Undefined;
    case Type::text:
        return text;
    case Type::textList: {
        const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
        if (key.name == QLatin1String("neverRemove") && !areAbsolutePaths(document.array()))
            return QJsonValue::Undefined;
        return document.isArray() ? readAs(key.type, document.array()) : QJsonValue(QJsonValue::Undefined);
    }
    }
    return QJsonValue::Undefined;
}

QString Settings::expectedText(const Key &key)
{
    switch (key.type) {
    case Type::number:
        return QStringLiteral("a number");
    case Type::integer:
        return QStringLiteral("a whole number");
    case Type::boolean:
        return QStringLiteral("true or false");
    case Type::text:
        return QStringLiteral("a word");
    case Type::date:
        return QStringLiteral("seconds since 1970");
    case Type::textList:
        return key.name == QLatin1String("neverRemove") ? QStringLiteral("a JSON array of absolute paths")
                                                        : QStringLiteral("a JSON array of strings");
    }
    return {};
}

double Settings::cpuYellow() const
{
    return effective(keyNamed("cpuYellow")).toDouble();
}
double Settings::cpuRed() const
{
    return effective(keyNamed("cpuRed")).toDouble();
}
double Settings::memYellow() const
{
    return effective(keyNamed("memYellow")).toDouble();
}
double Settings::memRed() const
{
    return effective(keyNamed("memRed")).toDouble();
}
double Settings::processCpuRed() const
{
    return effective(keyNamed("processCpuRed")).toDouble();
}
bool Settings::notifyOnRed() const
{
    return effective(keyNamed("notifyOnRed")).toBool();
}
bool Settings::notifyOnStorage() const
{
    return effective(keyNamed("notifyOnStorage")).toBool();
}
bool Settings::showInDock() const
{
    return effective(keyNamed("showInDock")).toBool();
}
bool Settings::aiEnabled() const
{
    return effective(keyNamed("aiEnabled")).toBool();
}
bool Settings::hasCompletedOnboarding() const
{
    return effective(keyNamed("hasCompletedOnboarding")).toBool();
}
qint64 Settings::weeklyAttentionCount() const
{
    return effective(keyNamed("weeklyAttentionCount")).toInteger();
}
qint64 Settings::weeklyBytesFreed() const
{
    return effective(keyNamed("weeklyBytesFreed")).toInteger();
}

double Settings::storageNotifyThresholdGB() const
{
    return effective(keyNamed("storageNotifyThresholdGB")).toDouble();
}

RowDensity Settings::rowDensity() const
{
    return effective(keyNamed("rowDensity")) == compactDensity ? RowDensity::compact
                                                               : RowDensity::comfortable;
}

static std::optional<double> dateOf(const QJsonValue &value)
{
    return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

std::optional<double> Settings::lastWeeklySummaryDate() const
{
    return dateOf(effective(keyNamed("lastWeeklySummaryDate")));
}

std::optional<double> Settings::lastStorageNotifyCheckDate() const
{
    return dateOf(effective(keyNamed("lastStorageNotifyCheckDate")));
}

static QStringList textsOf(const QJsonValue &list)
{
    QStringList texts;
    for (const QJsonValue &text : list.toArray())
        texts.append(text.toString());
    return texts;
}

QStringList Settings::pinnedProcessNames() const
{
    return textsOf(effective(keyNamed("pinnedProcessNames")));
}

QStringList Settings::neverRemove() const
{
    return textsOf(effective(keyNamed("neverRemove")));
}

static void storeDate(SettingsStore &store, const char *key, std::optional<double> date)
{
    if (date)
        store.store(QLatin1String(key), *date);
    else
        store.remove(QLatin1String(key));
}

void Settings::takeFromWeek(qint64 bytesFreed, qint64 attentionCount)
{
    m_store.add(QStringLiteral("weeklyBytesFreed"), -bytesFreed);
    m_store.add(QStringLiteral("weeklyAttentionCount"), -attentionCount);
}

void Settings::addBytesFreed(qint64 bytes)
{
    m_store.add(QStringLiteral("weeklyBytesFreed"), bytes);
}

void Settings::setLastWeeklySummaryDate(std::optional<double> date)
{
    storeDate(m_store, "lastWeeklySummaryDate", date);
}

void Settings::setLastStorageNotifyCheckDate(std::optional<double> date)
{
    storeDate(m_store, "lastStorageNotifyCheckDate", date);
}

void Settings::setShowInDock(bool shown)
{
    m_store.store(QStringLiteral("showInDock"), shown);
}

void Settings::setHasCompletedOnboarding(bool completed)
{
    m_store.store(QStringLiteral("hasCompletedOnboarding"), completed);
}

void Settings::setPinnedProcessNames(const QStringList &names)
{
    m_store.store(QStringLiteral("pinnedProcessNames"), QJsonArray::fromStringList(names));
}

void Settings::addAttention()
{
    m_store.add(QStringLiteral("weeklyAttentionCount"), 1);
}

} // namespace swabby
