#include "platform/posix/FileSettingsStore.h"

#include "platform/FileIdentity.h"
#include "platform/posix/FolderLock.h"
#include "platform/posix/OwnFolder.h"
#include "platform/posix/SmallFile.h"
#include "platform/posix/WholeFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>

#include <sys/stat.h>

namespace swabby {
namespace {

constexpr std::int64_t largestFile = 4'000'000;

QString problemOf(const QByteArray &content, const QJsonParseError &error)
{
    if (content.trimmed().isEmpty())
        return QStringLiteral("it is empty");
    if (error.error == QJsonParseError::NoError)
        return QStringLiteral("it is no JSON object");
    return QStringLiteral("line %1: %2")
        .arg(content.left(error.offset).count('\n') + 1)
        .arg(error.errorString());
}

} // namespace

SettingsText settingsIn(const QByteArray &content)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(content, &error);
    return {document.object(), document.isObject() ? QString() : problemOf(content, error)};
}

FileSettingsStore::FileSettingsStore(QString filePath) : m_filePath(std::move(filePath))
{
    const QFileInfo file(m_filePath);
    if (const auto lock = FolderLock::tryLock(file.absolutePath()))
        sweepStrays(m_filePath);
}

std::optional<FileSettingsStore::Stamp> FileSettingsStore::stamp() const
{
    struct stat facts = {};
    if (::stat(QFile::encodeName(m_filePath).constData(), &facts) != 0)
        return std::nullopt;
    const FileIdentity found = FileIdentity::from(facts);
    return Stamp{static_cast<qint64>(found.device), static_cast<qint64>(found.inode), found.size,
                 found.modifiedNanoseconds, found.changedNanoseconds};
}

FileSettingsStore::Contents FileSettingsStore::contents() const
{
    const SmallFile file = readSmallFile(QFile::encodeName(m_filePath).toStdString(), largestFile);
    if (!file.isThere)
        return {};
    const SettingsText text = settingsIn(file.content);
    QString problem = file.problem.isEmpty() ? text.problem : file.problem;
    if (!problem.isEmpty())
        problem = QStringLiteral("%1 cannot be read (%2)").arg(m_filePath, problem);
    return {text.values, true, problem};
}

SettingsStore::Reading FileSettingsStore::read(const QString &key) const
{
    const std::scoped_lock guard(m_mutex);
    if (const auto now = stamp(); !now || now != m_readStamp) {
        m_read = contents();
        m_readStamp = now;
    }
    return {m_read.values.value(key), m_read.problem};
}

bool FileSettingsStore::change(const QString &key, const Edit &edit)
{
    const QString folder = QFileInfo(m_filePath).absolutePath();
    if (edit(QJsonValue::Undefined).isUndefined() && !contents().isThere)
        return true;
    if (!makeOwnFolder(folder))
        return false;
    const auto lock = FolderLock::lock(folder);
    if (!lock)
        return false;
    Contents stored = contents();
    if (!stored.problem.isEmpty())
        return false;
    stored.values.insert(key, edit(stored.values.value(key))); // an undefined value takes the key away
    return saveWholeFile(m_filePath, QJsonDocument(stored.values).toJson()).isEmpty();
}

} // namespace swabby
