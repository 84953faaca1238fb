#pragma once

#include <QtCore/QJsonValue>
#include <QtCore/QString>

namespace swabby {

/// A per-user key-value store. Values are JSON values; a date is seconds since 1970. Every call goes to
/// the disk's current state, so two programs see each other's changes; main thread or any other.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    /// Undefined when the key is absent or the store cannot be read.
    virtual QJsonValue value(const QString &key) const = 0;
    /// Stores one key and leaves every other as it is on disk. False when it could not be written.
    virtual bool store(const QString &key, const QJsonValue &value) = 0;
    /// True when the key is absent afterwards.
    virtual bool remove(const QString &key) = 0;
    /// Adds to a whole number in one step (absent counts as 0), so that two programs' sums both count.
    virtual bool add(const QString &key, qint64 amount) = 0;
    /// Stores one key if it still has the expected value (undefined: absent), in one step, so that of two
    /// programs one does what follows. False when it has another one or could not be written.
    virtual bool replace(const QString &key, const QJsonValue &expected, const QJsonValue &value) = 0;
};

} // namespace swabby
