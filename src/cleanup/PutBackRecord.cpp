#include "cleanup/PutBackRecord.h"

#include "platform/Utf8.h"
#include "platform/posix/WholeFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>

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

QByteArray lineOf(const TrashedItem &item)
{
    return QJsonDocument(jsonOf(item)).toJson(QJsonDocument::Compact) + '\n';
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
    for (const QByteArray &line : file.readAll().split('\n'))
        if (auto item = itemOf(QJsonDocument::fromJson(line).object()))
            items.push_back(*std::move(item));
    return items;
}

bool PutBackRecord::add(const TrashedItem &item) const
{
    const QByteArray line = lineOf(item);
    QDir().mkpath(QFileInfo(m_filePath).absolutePath());
    QFile file(m_filePath);
    // In one piece, so that no end of the program leaves half a line.
    return file.open(QIODevice::Append | QIODevice::Unbuffered, QFile::ReadOwner | QFile::WriteOwner) &&
           file.write(line) == line.size();
}

bool PutBackRecord::store(const std::vector<TrashedItem> &items) const
{
    QDir().mkpath(QFileInfo(m_filePath).absolutePath());
    QByteArray lines;
    for (const TrashedItem &item : items)
        lines += lineOf(item);
    return saveWholeFile(m_filePath, lines, FileAudience::owner).isEmpty();
}

void PutBackRecord::forget() const
{
    QFile::remove(m_filePath);
}

PutBackResult PutBackRecord::putBackAll(Disposal &disposal) const
{
    // A folder that was moved after something in it has to be there again before that.
    std::vector<TrashedItem> restored;
    const std::vector<TrashedItem> items = load();
    std::copy_if(items.rbegin(), items.rend(), std::back_inserter(restored),
                 [&](const TrashedItem &item) { return disposal.putBack(item); });

    std::vector<TrashedItem> left = load();
    std::erase_if(left, [&](const TrashedItem &item) {
        return std::find(restored.begin(), restored.end(), item) != restored.end();
    });
    if (left.empty())
        forget();
    else
        store(left);
    return {.restored = static_cast<int>(restored.size()),
            .left = static_cast<int>(items.size() - restored.size())};
}

} // namespace swabby
