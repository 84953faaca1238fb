#include "cleanup/PutBackRecord.h"

#include "platform/Utf8.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QSaveFile>

namespace swabby {
namespace {

using Path = std::filesystem::path;

constexpr auto encodingEnding = QLatin1String("Base64");

/// A path as text that people can read; as what JSON can hold when it is none.
void addPath(QJsonObject &object, const QString &key, const Path &path)
{
    const QByteArray bytes = QByteArray::fromStdString(path.native());
    if (isUtf8(path.native()))
        object.insert(key, QString::fromUtf8(bytes));
    else
        object.insert(key + encodingEnding, QString::fromLatin1(bytes.toBase64()));
}

Path pathUnder(const QJsonObject &object, const QString &key)
{
    const QJsonValue text = object.value(key);
    if (text.isString())
        return text.toString().toStdString();
    return QByteArray::fromBase64(object.value(key + encodingEnding).toString().toLatin1()).toStdString();
}

// A number of 64 bits is text here: JSON's own are too small for it.
QString textOfNumber(std::uint64_t number)
{
    return QString::number(number);
}

QJsonObject jsonOf(const TrashedItem &item)
{
    const FileIdentity &identity = item.identity;
    QJsonObject object = {
        {QStringLiteral("device"), textOfNumber(identity.device)},
        {QStringLiteral("inode"), textOfNumber(identity.inode)},
        {QStringLiteral("kind"), static_cast<int>(identity.kind)},
        {QStringLiteral("size"), static_cast<qint64>(identity.size)},
        {QStringLiteral("modifiedNanoseconds"), static_cast<qint64>(identity.modifiedNanoseconds)}};
    addPath(object, QStringLiteral("from"), item.from);
    addPath(object, QStringLiteral("trashed"), item.trashed);
    return object;
}

std::optional<TrashedItem> itemOf(const QJsonObject &object)
{
    const int kind = object.value(QStringLiteral("kind")).toInt(-1);
    const TrashedItem item = {
        pathUnder(object, QStringLiteral("from")), pathUnder(object, QStringLiteral("trashed")),
        FileIdentity{.device = object.value(QStringLiteral("device")).toString().toULongLong(),
                     .inode = object.value(QStringLiteral("inode")).toString().toULongLong(),
                     .kind = static_cast<FileKind>(kind),
                     .size = object.value(QStringLiteral("size")).toInteger(),
                     .modifiedNanoseconds = object.value(QStringLiteral("modifiedNanoseconds")).toInteger()}};
    const bool isKind = kind >= 0 && kind <= static_cast<int>(FileKind::other);
    if (!isKind || !item.from.is_absolute() || !item.trashed.is_absolute())
        return std::nullopt;
    return item;
}

} // namespace

PutBackRecord::PutBackRecord(const QString &applicationData)
    : m_filePath(applicationData + QStringLiteral("/put-back.json"))
{
}

std::vector<TrashedItem> PutBackRecord::load() const
{
    std::vector<TrashedItem> items;
    QFile file(m_filePath);
    if (!file.open(QIODevice::ReadOnly))
        return items;
    for (const QJsonValue &value : QJsonDocument::fromJson(file.readAll()).array())
        if (auto item = itemOf(value.toObject()))
            items.push_back(*std::move(item));
    return items;
}

bool PutBackRecord::store(const std::vector<TrashedItem> &items) const
{
    QJsonArray array;
    for (const TrashedItem &item : items)
        array.append(jsonOf(item));
    QDir().mkpath(QFileInfo(m_filePath).absolutePath());
    QSaveFile file(m_filePath);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write(QJsonDocument(array).toJson());
    return file.commit();
}

void PutBackRecord::forget() const
{
    QFile::remove(m_filePath);
}

PutBackResult PutBackRecord::putBackAll(Disposal &disposal) const
{
    // A folder that was moved after something in it has to be there again before that.
    PutBackResult result;
    std::vector<TrashedItem> left;
    const std::vector<TrashedItem> items = load();
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        if (disposal.putBack(*item))
            ++result.restored;
        else
            left.insert(left.begin(), *item);
    }
    result.left = static_cast<int>(left.size());
    if (left.empty())
        forget();
    else
        store(left);
    return result;
}

} // namespace swabby
