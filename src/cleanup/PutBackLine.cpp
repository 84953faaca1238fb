#include "cleanup/PutBackLine.h"

#include "platform/Utf8.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

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

} // namespace

QByteArray putBackLine(const TrashedItem &item)
{
    return QJsonDocument(jsonOf(item)).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<TrashedItem> itemOfPutBackLine(const QByteArray &line)
{
    const QJsonObject object = QJsonDocument::fromJson(line).object();
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

} // namespace swabby
