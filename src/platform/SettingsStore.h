#pragma once

#include <QtCore/QJsonValue>
#include <QtCore/QString>

#include <functional>

namespace swabby {

/// A per-user key-value store. Values are JSON values, an undefined one stands for none; a date is seconds
/// since 1970. Every call goes to the disk's current state, so two programs see each other's changes.
class SettingsStore {
public:
    /// What becomes of the stored value. May be asked twice.
    using Edit = std::function<QJsonValue(const QJsonValue &stored)>;

    virtual ~SettingsStore() = default;

    /// Undefined also when the store cannot be read. Waits for nobody: any thread.
    virtual QJsonValue value(const QString &key) const = 0;
    /// Changes one key in one step, so that of two programs' changes none is lost, and leaves every other as
    /// it is stored. False when it could not be written. Waits while another program writes: background work,
    /// or a terminal.
    virtual bool change(const QString &key, const Edit &edit) = 0;
};

} // namespace swabby
