#include "platform/linux/LinuxStartupControl.h"

#include "platform/Utf8.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/UnitStates.h"
#include "platform/posix/RenameWithoutReplacing.h"
#include "platform/posix/WholeFile.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace swabby {
namespace {

constexpr std::chrono::milliseconds managerPatience{5'000};
const QByteArray hiddenEntry = "[Desktop Entry]\n"
                               "Type=Application\n"
                               "Name=Turned off in Swabby\n"
                               "Hidden=true\n"
                               "X-Swabby-TurnedOff=true\n";

QByteArray contentOf(const QString &path)
{
    constexpr qint64 most = 64 * 1024;
    QFile file(path);
    // Opening a pipe would wait for its writer.
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) ? file.read(most) : QByteArray();
}

bool isEmptyFile(const QString &path)
{
    const QFileInfo file(path);
    return file.isFile() && file.size() == 0;
}

} // namespace

LinuxStartupControl::LinuxStartupControl(Folders folders, StopToken stop)
    : m_folders(std::move(folders)), m_stop(std::move(stop))
{
}

void LinuxStartupControl::endJob(const QString &label, const QString &definitionPath)
{
    if (isUnit(definitionPath) && !m_folders.userBus.empty())
        changeUnit(m_folders.userBus, UnitChange::stop, label.toStdString(), managerPatience, m_stop);
}

void LinuxStartupControl::beginJob(const QString &definitionPath)
{
    if (isUnit(definitionPath) && !m_folders.userBus.empty())
        changeUnit(m_folders.userBus, UnitChange::start, QFileInfo(definitionPath).fileName().toStdString(),
                   managerPatience, m_stop);
}

bool LinuxStartupControl::setAside(const QString &definitionPath)
{
    const bool hadSystemEntry = hidesSystemEntry(definitionPath);
    if (!renameWithoutReplacing(definitionPath, asideName(definitionPath)))
        return false;
    if (hadSystemEntry && !saveWholeFile(definitionPath, hiddenEntry).isEmpty()) {
        renameWithoutReplacing(asideName(definitionPath), definitionPath);
        return false;
    }
    if (isUnit(definitionPath))
        for (const QString &other : wantedFrom(definitionPath, {}))
            renameWithoutReplacing(other, asideName(other));
    return true;
}

bool LinuxStartupControl::putBack(const QString &definitionPath)
{
    // An empty one is what a full disk can have left of ours; it says nothing of its own.
    const bool isHiddenByUs = contentOf(definitionPath) == hiddenEntry || isEmptyFile(definitionPath);
    if (isHiddenByUs && (!QFileInfo::exists(asideName(definitionPath)) || !QFile::remove(definitionPath)))
        return false;
    if (!renameWithoutReplacing(asideName(definitionPath), definitionPath))
        return false;
    if (isUnit(definitionPath))
        for (const QString &other : wantedFrom(definitionPath, QLatin1String(setAsideEnding)))
            renameWithoutReplacing(asideName(other), other);
    return true;
}

std::vector<StartupEntry> LinuxStartupControl::setAsideEntries()
{
    std::vector<StartupEntry> entries;
    const auto add = [&entries](const QString &asidePath, const QString &name) {
        StartupEntry entry;
        entry.label = name;
        entry.definitionPath = asidePath.chopped(static_cast<qsizetype>(qstrlen(setAsideEnding)));
        entry.scope = LoginItemScope::userAgent;
        entries.push_back(std::move(entry));
    };
    constexpr auto kinds = QDir::Files | QDir::System | QDir::Hidden;
    for (QDirIterator files(textOf(m_folders.autostart), {QStringLiteral("*.desktop.disabled")}, kinds);
         files.hasNext();) {
        const QString path = files.next();
        const DesktopEntry entry = desktopEntryFrom(contentOf(path).toStdString());
        const QString file = files.fileName().chopped(static_cast<qsizetype>(qstrlen(".desktop.disabled")));
        add(path, entry.name.empty() ? file : textOf(entry.name));
    }
    QStringList seen;
    for (QDirIterator targets(textOf(m_folders.units),
                              {QStringLiteral("*.wants"), QStringLiteral("*.requires")}, QDir::Dirs);
         targets.hasNext();)
        for (QDirIterator links(targets.next(),
                                {QStringLiteral("*.service.disabled"), QStringLiteral("*.timer.disabled")},
                                kinds);
             links.hasNext();) {
            const QString path = links.next();
            const QString unit = links.fileName().chopped(static_cast<qsizetype>(qstrlen(setAsideEnding)));
            if (!seen.contains(unit))
                add(path, unit);
            seen.append(unit);
        }
    return entries;
}

bool LinuxStartupControl::isUnit(const QString &definitionPath) const
{
    return definitionPath.startsWith(textOf(m_folders.units) + QLatin1Char('/'));
}

bool LinuxStartupControl::hidesSystemEntry(const QString &definitionPath) const
{
    if (isUnit(definitionPath))
        return false;
    const QString name = QFileInfo(definitionPath).fileName();
    return std::any_of(m_folders.systemAutostart.begin(), m_folders.systemAutostart.end(),
                       [&](const std::string &folder) {
                           return QFileInfo::exists(textOf(folder) + QLatin1Char('/') + name);
                       });
}

QStringList LinuxStartupControl::wantedFrom(const QString &link, const QString &ending) const
{
    QStringList links;
    const QString name = QFileInfo(link).fileName();
    for (QDirIterator targets(textOf(m_folders.units),
                              {QStringLiteral("*.wants"), QStringLiteral("*.requires")}, QDir::Dirs);
         targets.hasNext();) {
        const QString other = targets.next() + QLatin1Char('/') + name;
        const QFileInfo found(other + ending);
        if (other != link && (found.exists() || found.isSymLink()))
            links.append(other);
    }
    return links;
}

} // namespace swabby
