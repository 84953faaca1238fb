#pragma once

#include "platform/LoginService.h"
#include "platform/Notifier.h"
#include "platform/Permissions.h"
#include "platform/SecretStore.h"
#include "platform/Workspace.h"
#include "platform/machinefolder/EventLog.h"

#include <QtCore/QString>

namespace swabby {

// What a Mac's desktop would do, written down in the events of a machine folder instead.

/// Nobody opens what nobody sees.
class FolderNotifier final : public Notifier {
public:
    FolderNotifier(const EventLog &events, Permissions &permissions)
        : m_events(events), m_permissions(permissions)
    {
    }
    void requestPermission() override { m_permissions.note(Permission::notifications, false); }
    void post(const Notification &notification, std::function<void()> opened) override;

private:
    const EventLog &m_events;
    Permissions &m_permissions;
};

class FolderWorkspace final : public Workspace {
public:
    explicit FolderWorkspace(const EventLog &events) : m_events(events) {}
    bool reveal(const QString &path) override;
    bool openLoginItemSettings() override;
    bool openPermissionSettings(Permission what) override;

private:
    const EventLog &m_events;
};

/// The register is a file in the folder that is there while Swabby opens at login.
class FolderLoginService final : public LoginService {
public:
    FolderLoginService(QString registerFile, const EventLog &events)
        : m_registerFile(std::move(registerFile)), m_events(events)
    {
    }
    bool isEnabled() override;
    QString registerAtLogin() override;
    QString unregister() override;

private:
    const QString m_registerFile;
    const EventLog &m_events;
};

/// Secrets in one file that only its owner may read.
class FolderSecretStore final : public SecretStore {
public:
    explicit FolderSecretStore(QString file) : m_file(std::move(file)) {}
    SecretReading read(const QString &account, Unlocking unlocking, const StopToken &stop) override;
    bool write(const QString &value, const QString &account) override;
    void remove(const QString &account) override;

private:
    const QString m_file;
};

} // namespace swabby
