#pragma once

#include "platform/SettingsStore.h"

#include <QtCore/QSettings>

#include <memory>

namespace swabby {

/// Settings in what the system keeps for programs under keys, each with a type of its own: a Mac's user
/// defaults. A key whose name ends in "Date" holds a date there.
class DefaultsStore final : public SettingsStore {
public:
    /// Opens them as they are now; called for every reading and every change, on any thread.
    using Open = std::function<std::unique_ptr<QSettings>()>;

    /// While one program changes a key it holds the lock on that folder, which is made when it is missing.
    DefaultsStore(Open open, QString lockedFolder)
        : m_open(std::move(open)), m_lockedFolder(std::move(lockedFolder))
    {
    }

    Reading read(const QString &key) const override;
    bool change(const QString &key, const Edit &edit) override;
    QString place() const override;

private:
    const Open m_open;
    const QString m_lockedFolder;
};

/// The user defaults of com.swabby.app alone, on a Mac.
std::unique_ptr<QSettings> openUserDefaults();

} // namespace swabby
