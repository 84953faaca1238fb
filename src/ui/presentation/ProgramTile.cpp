#include "ui/presentation/ProgramTile.h"

#include "engine/ProcessSample.h"
#include "startup/LoginItem.h"
#include "ui/presentation/ProcessText.h"

#include <QtCore/QFile>

namespace swabby {
namespace {

ProgramTile tileFor(const QString &name, IconOwner owner)
{
    ProgramTile tile;
    tile.letter = tileLetter(name);
    tile.color = tileColorIndex(name);
    tile.owner = std::move(owner);
    return tile;
}

std::filesystem::path pathOf(const QString &name)
{
    return QFile::encodeName(name).toStdString();
}

} // namespace

ProgramTile tileOf(const ProcessSample &process)
{
    return tileFor(process.title.isEmpty() ? process.name : process.title,
                   {pathOf(process.path), process.isApp ? process.name : QString()});
}

ProgramTile tileOf(const LoginItem &item)
{
    return tileFor(item.label, {pathOf(item.programPath), item.label, item.icon});
}

ProgramTile tileOf(const QString &name, const std::filesystem::path &application)
{
    return tileFor(name, {application, name});
}

} // namespace swabby
