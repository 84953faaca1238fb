#pragma once

#include "platform/SettingsStore.h"
#include "settings/SettingTable.h"

#include <QtCore/QVariant>

namespace swabby {

/// Whether it is certain that nothing goes by that path. Asks the disk.
bool isMissing(const QString &path);
/// The path with "~" at its beginning as that folder.
QString withHome(const QString &path, const QString &home);

/// The user's preferences by the rows of settingTable. Every read goes to the store, so nothing caches a
/// stale value; a missing or malformed value gives the default. Whatever changes something waits while
/// another program does: background work, or a terminal. It gives false when it could not be written.
class Settings {
public:
    explicit Settings(SettingsStore &store) : m_store(store) {}

    /// The value in force.
    template <typename Value>
    Value value(const Setting<Value> &key) const;
    /// The value in force as JSON: the stored one when it has the key's type, else the default.
    QJsonValue effective(const SettingKey &key) const;
    /// The stored value as it is; undefined when nothing is stored.
    QJsonValue stored(const SettingKey &key) const { return m_store.value(QLatin1String(key.name)); }

    /// Where and why what is stored cannot be read, and what comes of that, in words that leave out the full
    /// stop; empty when it can.
    QString problem() const;

    /// An undefined value removes.
    bool store(const SettingKey &key, const QJsonValue &value);
    bool unset(const SettingKey &key) { return store(key, QJsonValue::Undefined); }
    /// Stores the value if nobody has changed the stored one since it was seen; false also when somebody has.
    bool replace(const SettingKey &key, const QJsonValue &seen, const QJsonValue &value);
    /// So that two programs' sums both count.
    bool add(const Setting<qint64> &key, qint64 amount);
    /// Whether nobody has been welcomed yet. Settings that cannot be read are somebody's.
    bool isFirstRun() const;
    /// What has to stay whatever is found there: absolute paths, and in such words why they cannot be told,
    /// which is when nothing may go. home is what "~" stands for.
    struct NeverRemove {
        QStringList paths;
        QString problem;
    };
    NeverRemove neverRemove(const QString &home) const;
    /// Keeps what lies there from removal or no longer does, and leaves the other paths as they are stored.
    /// False also when those cannot be told.
    bool setNeverRemoved(const QString &path, bool isKept);
    /// Pins that program or unpins it, and leaves the other pins as they are stored.
    bool setPinned(const QString &name, bool isPinned);

    /// Every key, in the order people are shown them.
    static constexpr auto keys()
    {
        return std::apply(
            [](const auto &...key) { return std::array{static_cast<const SettingKey *>(&key)...}; },
            settingTable);
    }
    /// Null for a name that is no key.
    static const SettingKey *find(const QString &name);
    /// A value given as text (a number, true or false, a word, seconds since 1970, a JSON array); undefined
    /// when it is none that the key allows.
    static QJsonValue parse(const SettingKey &key, const QString &text);
    /// What parse() takes for this key, in words.
    static QString expectedText(const SettingKey &key);

private:
    SettingsStore &m_store;
};

template <typename Value>
Value Settings::value(const Setting<Value> &key) const
{
    const QJsonValue value = effective(key);
    if constexpr (std::is_enum_v<Value>)
        return static_cast<Value>(key.wordIndex(value.toString()).value_or(0));
    else if constexpr (std::is_same_v<Value, std::optional<double>>)
        return value.isDouble() ? Value(value.toDouble()) : std::nullopt;
    else
        return value.toVariant().template value<Value>();
}

} // namespace swabby
