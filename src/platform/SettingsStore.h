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

    /// What a key holds, and whether that can be told at all.
    struct Reading {
        QJsonValue value; ///< undefined for none
        QString problem;  ///< where and why the store cannot be read; empty when it can, or nothing is stored
    };

    /// Both as of one moment. Waits for nobody: any thread.
    virtual Reading read(const QString &key) const = 0;
    /// Undefined also when the store cannot be read.
    QJsonValue value(const QString &key) const { return read(key).value; }
    /// Changes one key in one step, so that of two programs' changes none is lost, and leaves every other as
    /// it is stored. False when it could not be written, and when what is there cannot be read: that stays
    /// for whoever can mend it. Waits while another program writes: background work, or a terminal.
    virtual bool change(const QString &key, const Edit &edit) = 0;
    /// The file a person would look for.
    virtual QString place() const = 0;
};

} // namespace swabby
