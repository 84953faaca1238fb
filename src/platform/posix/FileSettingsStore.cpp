#include "platform/posix/FileSettingsStore.h"

#include "platform/posix/FolderLock.h"
#include "platform/posix/WholeFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>

#include <sys/stat.h>

namespace swabby {
namespace {

std::pair<qint64, qint64> stampOf(const QString &path)
{
    struct stat facts = {};
    if (::stat(QFile::encodeName(path).constData(), &facts) != 0)
        return {-1, -1};
    return {static_cast<qint64>(facts.st_ino),
            facts.st_mtim.tv_sec * 1'000'000'000LL + facts.st_mtim.tv_nsec};
}

std::optional<QJsonObject> readObject(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isObject())
        return std::nullopt;
    return document.object();
}

/// Copies a file that is no JSON object to a name nothing has yet. False when it cannot be copied.
bool putAside(const QString &path)
{
    QString aside = path + QStringLiteral(".unreadable");
    for (int number = 2; QFileInfo::exists(aside); ++number)
        aside = path + QStringLiteral(".unreadable.%1").arg(number);
    return QFile::copy(path, aside);
}

} // namespace

FileSettingsStore::FileSettingsStore(QString filePath) : m_filePath(std::move(filePath))
{
    const QFileInfo file(m_filePath);
    if (const auto lock = FolderLock::tryLock(file.absolutePath()))
        sweepStrays(m_filePath);
}

QJsonValue FileSettingsStore::value(const QString &key) const
{
    const std::scoped_lock guard(m_mutex);
    if (const auto stamp = stampOf(m_filePath); stamp != m_readStamp) {
        m_values = readObject(m_filePath).value_or(QJsonObject());
        m_readStamp = stamp;
    }
    return m_values.value(key);
}

bool FileSettingsStore::change(const QString &key, const Edit &edit)
{
    const QFileInfo file(m_filePath);
    if (!file.exists() && edit(QJsonValue::Undefined).isUndefined())
        return true;
    if (!QDir().mkpath(file.absolutePath()))
        return false;
    const auto lock = FolderLock::lock(file.absolutePath());
    if (!lock)
        return false;
    const std::optional<QJsonObject> values = readObject(m_filePath);
    if (!values && QFileInfo(m_filePath).size() > 0 && !putAside(m_filePath))
        return false;
    QJsonObject changed = values.value_or(QJsonObject());
    changed.insert(key, edit(changed.value(key))); // an undefined value takes the key away
    return saveWholeFile(m_filePath, QJsonDocument(changed).toJson()).isEmpty();
}

} // namespace swabby
