#include "settings/Settings.h"

#include "settings/CallableAddress.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <cmath>
#include <limits>
#include <set>

namespace swabby {
namespace {

using Type = SettingKey::Type;

bool isTextList(const QJsonValue &value)
{
    const QJsonArray list = value.toArray();
    return value.isArray() && std::all_of(list.begin(), list.end(),
                                          [](const QJsonValue &element) { return element.isString(); });
}

/// The value read as the key's type, as a person's preferences are read: a switch stored as a number still
/// counts. Undefined when it cannot be.
QJsonValue readAs(const SettingKey &key, const QJsonValue &value)
{
    const bool isNumeric = value.isDouble() || value.isBool();
    const double number = value.isBool() ? static_cast<double>(value.toBool()) : value.toDouble();
    switch (key.type) {
    case Type::number:
        return isNumeric ? QJsonValue(number) : QJsonValue(QJsonValue::Undefined);
    case Type::integer: {
        constexpr double limit = 0x1p63;
        const qint64 truncated = std::abs(number) < limit ? static_cast<qint64>(number) : 0;
        return isNumeric ? QJsonValue(value.toInteger(truncated)) : QJsonValue(QJsonValue::Undefined);
    }
    case Type::boolean:
        return isNumeric ? QJsonValue(number != 0) : QJsonValue(QJsonValue::Undefined);
    case Type::text: {
        const bool isTaken = value.isString() && (!key.words[0] || key.wordIndex(value.toString()));
        return isTaken ? value : QJsonValue(QJsonValue::Undefined);
    }
    case Type::date:
        return value.isDouble() ? value : QJsonValue(QJsonValue::Undefined);
    case Type::textList:
        return isTextList(value) ? value : QJsonValue(QJsonValue::Undefined);
    }
    return QJsonValue::Undefined;
}

QJsonValue parseAs(Type type, const QString &text)
{
    bool parsed = false;
    switch (type) {
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
        const bool isTaken = document.isArray() && isTextList(document.array());
        return isTaken ? QJsonValue(document.array()) : QJsonValue(QJsonValue::Undefined);
    }
    }
    return QJsonValue::Undefined;
}

} // namespace

bool isTheme(const QJsonValue &word)
{
    return setting<"theme">.wordIndex(word.toString()).has_value();
}

bool isModelAddress(const QJsonValue &address)
{
    return address.toString().isEmpty() || mayBeCalled(QUrl(address.toString(), QUrl::StrictMode));
}

bool isModelName(const QJsonValue &name)
{
    constexpr qsizetype longest = 200;
    const QString text = name.toString();
    return text.size() <= longest && text.trimmed() == text &&
           std::all_of(text.begin(), text.end(), [](QChar letter) { return letter.isPrint(); });
}

QJsonValue SettingKey::defaultValue() const
{
    switch (type) {
    case Type::number:
    case Type::integer:
        return figure;
    case Type::boolean:
        return figure != 0;
    case Type::text:
        return QLatin1String(words[0]);
    case Type::date:
        return QJsonValue::Null;
    case Type::textList:
        return QJsonArray();
    }
    return QJsonValue::Null;
}

std::optional<int> SettingKey::wordIndex(const QString &word) const
{
    const auto known = std::find_if(words.begin(), words.end(),
                                    [&](const char *each) { return each && word == QLatin1String(each); });
    return known == words.end() ? std::nullopt : std::optional(static_cast<int>(known - words.begin()));
}

const SettingKey *Settings::find(const QString &name)
{
    for (const SettingKey *key : keys())
        if (name == QLatin1String(key->name))
            return key;
    return nullptr;
}

QJsonValue Settings::effective(const SettingKey &key) const
{
    const QJsonValue value = readAs(key, stored(key));
    return value.isUndefined() ? key.defaultValue() : value;
}

bool Settings::isFirstRun() const
{
    return !value(setting<"hasCompletedOnboarding">) && m_store.read({}).problem.isEmpty();
}

bool Settings::store(const SettingKey &key, const QJsonValue &value)
{
    return m_store.change(QLatin1String(key.name), [&](const QJsonValue & /*stored*/) { return value; });
}

bool Settings::replace(const SettingKey &key, const QJsonValue &seen, const QJsonValue &value)
{
    bool isAsSeen = false;
    const bool isWritten = m_store.change(QLatin1String(key.name), [&](const QJsonValue &stored) {
        isAsSeen = stored == seen;
        return isAsSeen ? value : stored;
    });
    return isAsSeen && isWritten;
}

bool Settings::add(const Setting<qint64> &key, qint64 amount)
{
    return m_store.change(QLatin1String(key.name), [&](const QJsonValue &stored) -> QJsonValue {
        qint64 sum = 0;
        return __builtin_add_overflow(stored.toInteger(), amount, &sum) ? std::numeric_limits<qint64>::max()
                                                                        : sum;
    });
}

bool Settings::setPinned(const QString &name, bool isPinned)
{
    const SettingKey &key = setting<"pinnedProcessNames">;
    return m_store.change(QLatin1String(key.name), [&](const QJsonValue &stored) -> QJsonValue {
        std::set<QString> names;
        for (const QJsonValue &pinned : readAs(key, stored).toArray())
            names.insert(pinned.toString());
        if (isPinned)
            names.insert(name);
        else
            names.erase(name);
        return QJsonArray::fromStringList({names.begin(), names.end()});
    });
}

QJsonValue Settings::parse(const SettingKey &key, const QString &text)
{
    const QJsonValue value = parseAs(key.type, text);
    return value.isUndefined() || !key.isAllowed || key.isAllowed(value) ? value : QJsonValue::Undefined;
}

QString Settings::expectedText(const SettingKey &key)
{
    if (key.expected)
        return QLatin1String(key.expected);
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
        return QStringLiteral("a JSON array of strings");
    }
    return {};
}

} // namespace swabby
