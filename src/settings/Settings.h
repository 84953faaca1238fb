#pragma once

#include "platform/SettingsStore.h"

#include <QtCore/QStringList>

#include <optional>
#include <vector>

namespace swabby {

enum class RowDensity { comfortable, compact };

/// The one place that knows the names, types and defaults of the user's preferences. Every read goes to
/// the store, so nothing caches a stale value; a missing or malformed value gives the default.
class Settings {
public:
    enum class Type { number, integer, boolean, text, date, textList };

    struct Key {
        QString name;
        Type type;
        QJsonValue defaultValue; ///< null for a date that is absent by default
    };

    explicit Settings(SettingsStore &store) : m_store(store) {}

    double cpuYellow() const;
    double cpuRed() const;
    double memYellow() const;
    double memRed() const;
    double processCpuRed() const;
    bool notifyOnRed() const;
    bool notifyOnStorage() const;
    double storageNotifyThresholdGB() const;
    bool showInDock() const;
    RowDensity rowDensity() const;
    std::optional<double> lastWeeklySummaryDate() const;
    std::optional<double> lastStorageNotifyCheckDate() const;
    bool hasCompletedOnboarding() const;
    QStringList pinnedProcessNames() const;
    qint64 weeklyAttentionCount() const;
    qint64 weeklyBytesFreed() const;
    bool aiEnabled() const;
    QStringList neverRemove() const;

    void setShowInDock(bool shown);
    void setLastWeeklySummaryDate(std::optional<double> date);
    void setLastStorageNotifyCheckDate(std::optional<double> date);
    void setHasCompletedOnboarding(bool completed);
    void setPinnedProcessNames(const QStringList &names);
    void addAttention();
    void addBytesFreed(qint64 bytes);
    /// Takes what was reported off the week's counters; what another program counted meanwhile stays.
    void takeFromWeek(qint64 bytesFreed, qint64 attentionCount);

    /// Every key, in the order people are shown them.
    static const std::vector<Key> &keys();
    /// No value for a name that is no key.
    static const Key *find(const QString &name);
    /// The value in force: the stored one when it has the key's type, else the default.
    QJsonValue effective(const Key &key) const;
    /// A value given as text (a number, true or false, a word, seconds since 1970, a JSON array);
    /// undefined when it does not have the key's type.
    static QJsonValue parse(const Key &key, const QString &text);
    /// What parse() takes for this key, in words.
    static QString expectedText(const Key &key);
    /// False when it could not be written.
    bool store(const Key &key, const QJsonValue &value) { return m_store.store(key.name, value); }
    /// The stored value as it is; undefined when nothing is stored.
    QJsonValue stored(const Key &key) const { return m_store.value(key.name); }
    /// Stores the value if nobody has changed the stored one since it was seen; false when somebody has.
    bool replace(const Key &key, const QJsonValue &seen, const QJsonValue &value)
    {
        return m_store.replace(key.name, seen, value);
    }
    /// False when it could not be written.
    bool unset(const Key &key) { return m_store.remove(key.name); }

private:
    SettingsStore &m_store;
};

} // namespace swabby
