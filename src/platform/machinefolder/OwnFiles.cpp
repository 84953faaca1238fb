#include "platform/machinefolder/OwnFiles.h"

#include "platform/FileIdentity.h"
#include "platform/posix/SmallFile.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

#include <algorithm>

namespace swabby {

bool isWithoutLinks(const std::filesystem::path &folder, const std::filesystem::path &below)
{
    std::filesystem::path path = folder;
    return std::none_of(below.begin(), below.end(), [&](const std::filesystem::path &part) {
        const auto found = FileIdentity::of(path /= part);
        return found && found->kind == FileKind::link;
    });
}

bool isOwnFile(const QString &path)
{
    const auto found = FileIdentity::of(QFile::encodeName(path).toStdString());
    return !found || found->kind == FileKind::file;
}

QJsonObject ownObject(const QString &path)
{
    constexpr std::int64_t largest = 1'000'000;
    return isOwnFile(path)
               ? QJsonDocument::fromJson(smallFile(QFile::encodeName(path).toStdString(), largest)).object()
               : QJsonObject();
}

} // namespace swabby
