#include "settings/Settings.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>

#include <algorithm>
#include <filesystem>

namespace swabby {
namespace {

constexpr const auto &key = setting<"neverRemove">;

QString unreadable(const QString &why)
{
    return why.isEmpty()
               ? why
               : why + QStringLiteral(
                           "; no setting is stored, nothing searched and nothing removed until it can be");
}

} // namespace

bool areAbsolutePaths(const QJsonValue &paths)
{
    const QJsonArray list = paths.toArray();
    return paths.isArray() && std::all_of(list.begin(), list.end(), [](const QJsonValue &element) {
               const QString path = withHome(element.toString(), QStringLiteral("/"));
               return path.startsWith(QLatin1Char('/')) && !path.contains(QChar(0));
           });
}

bool isMissing(const QString &path)
{
    std::error_code ignored;
    return std::filesystem::symlink_status(QFile::encodeName(path).toStdString(), ignored).type() ==
           std::filesystem::file_type::not_found;
}

QString withHome(const QString &path, const QString &home)
{
    const bool isInHome = path == QLatin1String("~") || path.startsWith(QLatin1String("~/"));
    return isInHome ? home + path.mid(1) : path;
}

QString Settings::problem() const
{
    return unreadable(m_store.read({}).problem);
}

Settings::NeverRemove Settings::neverRemove(const QString &home) const
{
    const SettingsStore::Reading reading = m_store.read(QLatin1String(key.name));
    if (!reading.problem.isEmpty())
        return {{}, unreadable(reading.problem)};
    if (!reading.value.isUndefined() && !areAbsolutePaths(reading.value))
        return {{},
                QStringLiteral("neverRemove in %1 is no list of absolute paths; nothing is searched "
                               "and nothing removed until it is")
                    .arg(m_store.place())};
    QStringList paths;
    for (const QJsonValue &path : reading.value.toArray())
        paths.append(withHome(path.toString(), home));
    return {paths, {}};
}

bool Settings::setNeverRemoved(const QString &path, bool isKept)
{
    bool isReadable = false;
    const bool isWritten =
        m_store.change(QLatin1String(key.name), [&](const QJsonValue &stored) -> QJsonValue {
            isReadable = stored.isUndefined() || areAbsolutePaths(stored);
            QStringList paths = stored.toVariant().toStringList();
            paths.removeAll(path);
            if (isKept)
                paths.append(path);
            return isReadable ? QJsonArray::fromStringList(paths) : stored;
        });
    return isReadable && isWritten;
}

} // namespace swabby
