#include "platform/macparts/DefaultsStore.h"

#include "platform/posix/FolderLock.h"
#include "platform/posix/OwnFolder.h"

#include <QtCore/QDateTime>

namespace swabby {
namespace {

bool isDate(const QString &key)
{
    return key.endsWith(QLatin1String("Date"));
}

QJsonValue valueIn(const QSettings &defaults, const QString &key)
{
    const QVariant value = defaults.value(key);
    if (!value.isValid())
        return QJsonValue::Undefined;
    if (value.userType() == QMetaType::QDateTime)
        return static_cast<double>(value.toDateTime().toMSecsSinceEpoch()) / 1000;
    return QJsonValue::fromVariant(value);
}

QVariant nativeValue(const QString &key, const QJsonValue &value)
{
    if (!isDate(key) || !value.isDouble())
        return value.toVariant();
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(value.toDouble() * 1000));
}

QString problemOf(const QSettings &defaults)
{
    return defaults.status() == QSettings::NoError
               ? QString()
               : QStringLiteral("%1 cannot be read").arg(defaults.fileName());
}

} // namespace

SettingsStore::Reading DefaultsStore::read(const QString &key) const
{
    const auto defaults = m_open();
    const QString problem = problemOf(*defaults);
    return {problem.isEmpty() ? valueIn(*defaults, key) : QJsonValue::Undefined, problem};
}

bool DefaultsStore::change(const QString &key, const Edit &edit)
{
    if (!makeOwnFolder(m_lockedFolder))
        return false;
    const auto lock = FolderLock::lock(m_lockedFolder);
    const auto defaults = m_open();
    if (!lock || !problemOf(*defaults).isEmpty())
        return false;
    const QJsonValue value = edit(valueIn(*defaults, key));
    if (value.isUndefined())
        defaults->remove(key);
    else
        defaults->setValue(key, nativeValue(key, value));
    defaults->sync();
    return problemOf(*defaults).isEmpty();
}

QString DefaultsStore::place() const
{
    return m_open()->fileName();
}

std::unique_ptr<QSettings> openUserDefaults()
{
    // On a Mac these two make the domain's name.
    auto defaults = std::make_unique<QSettings>(QStringLiteral("swabby.com"), QStringLiteral("app"));
    defaults->setFallbacksEnabled(false);
    defaults->sync();
    return defaults;
}

} // namespace swabby
