#include "platform/machinefolder/FolderServices.h"

#include "platform/machinefolder/OwnFiles.h"
#include "platform/mactools/SettingsPages.h"
#include "platform/posix/WholeFile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>

namespace swabby {
void FolderNotifier::post(const Notification &notification, std::function<void()> /*opened*/)
{
    m_events.write(QStringLiteral("notification"), QJsonObject{{QStringLiteral("title"), notification.title},
                                                               {QStringLiteral("body"), notification.body}});
}

bool FolderWorkspace::reveal(const QString &path)
{
    m_events.write(QStringLiteral("reveal"), path);
    return true;
}

bool FolderWorkspace::openLoginItemSettings()
{
    m_events.write(QStringLiteral("open"), SettingsPages::loginItems());
    return true;
}

bool FolderWorkspace::openPermissionSettings(Permission what)
{
    m_events.write(QStringLiteral("open"), SettingsPages::allowing(what));
    return true;
}

bool FolderLoginService::isEnabled()
{
    return QFile::exists(m_registerFile);
}

QString FolderLoginService::registerAtLogin()
{
    if (!isOwnFile(m_registerFile))
        return QStringLiteral("%1 is no regular file").arg(m_registerFile);
    if (QString problem = saveWholeFile(m_registerFile, {}); !problem.isEmpty())
        return problem;
    m_events.write(QStringLiteral("loginAtLogin"), true);
    return {};
}

QString FolderLoginService::unregister()
{
    QFile file(m_registerFile);
    if (file.exists() && !file.remove())
        return file.errorString();
    m_events.write(QStringLiteral("loginAtLogin"), false);
    return {};
}

SecretReading FolderSecretStore::read(const QString &account, Unlocking /*unlocking*/,
                                      const StopToken & /*stop*/)
{
    const QFileInfo file(m_file);
    if (file.exists() && !file.isReadable())
        return {.value = std::nullopt, .keeper = SecretReading::Keeper::locked};
    const QJsonValue secret = ownObject(m_file).value(account);
    return {secret.isString() ? std::optional(secret.toString()) : std::nullopt};
}

bool FolderSecretStore::write(const QString &value, const QString &account)
{
    QJsonObject secrets = ownObject(m_file);
    secrets.insert(account, value);
    return isOwnFile(m_file) &&
           saveWholeFile(m_file, QJsonDocument(secrets).toJson(), FileAudience::owner).isEmpty();
}

void FolderSecretStore::remove(const QString &account)
{
    QJsonObject secrets = ownObject(m_file);
    if (!secrets.contains(account))
        return;
    secrets.remove(account);
    saveWholeFile(m_file, QJsonDocument(secrets).toJson(), FileAudience::owner);
}

} // namespace swabby
