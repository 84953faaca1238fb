#include "platform/linux/LinuxStartupControl.h"

#include "platform/Utf8.h"
#include "platform/linux/AutostartFiles.h"
#include "platform/linux/AutostartOverride.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/StartupLabels.h"
#include "platform/linux/UnitFile.h"
#include "platform/linux/UnitStates.h"
#include "platform/posix/RenameWithoutReplacing.h"
#include "platform/posix/WholeFile.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryFile>

#include <algorithm>

namespace swabby {
namespace {

constexpr std::chrono::milliseconds managerPatience{5'000};
constexpr auto fileKinds = QDir::Files | QDir::System | QDir::Hidden;

/// Saves it under a name that nothing has; false, and nothing is there, when it has or the disk is full.
bool saveNewFile(const QString &path, const QByteArray &content)
{
    QTemporaryFile file(QFileInfo(path).absolutePath() + QStringLiteral("/.swabby-XXXXXX"));
    if (!file.open())
        return false;
    const QString name = file.fileName();
    file.close();
    return saveWholeFile(name, content).isEmpty() &&
           QFile::setPermissions(name, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup |
                                           QFile::ReadOther) &&
           renameWithoutReplacing(name, path);
}

/// Without the ending that sets it aside.
QString withoutEnding(const QString &name)
{
    return name.chopped(static_cast<qsizetype>(qstrlen(setAsideEnding)));
}

StartupEntry entryFrom(const QByteArray &text, const QString &definitionPath, LoginItemScope scope)
{
    const DesktopEntry desktop = desktopEntryFrom(text.toStdString());
    StartupEntry entry;
    entry.label = desktop.name.empty() ? QFileInfo(definitionPath).completeBaseName() : textOf(desktop.name);
    entry.definitionPath = definitionPath;
    entry.scope = scope;
    entry.icon = textOf(desktop.icon);
    return entry;
}

} // namespace

LinuxStartupControl::LinuxStartupControl(Folders folders, StopToken stop)
    : m_folders(std::move(folders)),
      m_stop(std::move(stop)),
      m_login(m_folders.autostart, m_folders.systemAutostart, m_folders.ownProgram, m_folders.desktops)
{
}

void LinuxStartupControl::endJob(const QString & /*label*/, const QString &definitionPath)
{
    if (isUnit(definitionPath) && !m_folders.userBus.empty())
        changeUnit(m_folders.userBus, UnitChange::stop, QFileInfo(definitionPath).fileName().toStdString(),
                   managerPatience, m_stop);
}

void LinuxStartupControl::beginJob(const QString &definitionPath)
{
    if (isUnit(definitionPath) && !m_folders.userBus.empty())
        changeUnit(m_folders.userBus, UnitChange::start, QFileInfo(definitionPath).fileName().toStdString(),
                   managerPatience, m_stop);
}

bool LinuxStartupControl::setAside(const QString &definitionPath)
{
    if (isSwabby(definitionPath))
        return m_login.unregister().isEmpty();
    if (isSystemEntry(definitionPath))
        return turnOff(definitionPath);
    const bool hadSystemEntry =
        !isUnit(definitionPath) && !systemEntry(QFileInfo(definitionPath).fileName()).isEmpty();
    const QByteArray content = definitionText(definitionPath);
    if (!renameWithoutReplacing(definitionPath, asideName(definitionPath)))
        return false;
    if (hadSystemEntry && !saveNewFile(definitionPath, turnedOffCopy(content))) {
        renameWithoutReplacing(asideName(definitionPath), definitionPath);
        return false;
    }
    if (isUnit(definitionPath))
        for (const QString &other : wantedFrom(definitionPath, {}))
            renameWithoutReplacing(other, asideName(other));
    return true;
}

bool LinuxStartupControl::turnOff(const QString &systemEntry) const
{
    const QByteArray content = definitionText(systemEntry);
    return !content.isEmpty() && QDir().mkpath(textOf(m_folders.autostart)) &&
           saveNewFile(overrideOf(systemEntry), turnedOffCopy(content));
}

bool LinuxStartupControl::putBack(const QString &definitionPath)
{
    if (isSwabby(definitionPath))
        return m_login.registerAtLogin().isEmpty();
    if (isSystemEntry(definitionPath))
        return turnOn(definitionPath);
    if (!putAsideBack(definitionPath))
        return false;
    if (isUnit(definitionPath))
        for (const QString &other : wantedFrom(definitionPath, QLatin1String(setAsideEnding)))
            renameWithoutReplacing(asideName(other), other);
    return true;
}

bool LinuxStartupControl::turnOn(const QString &systemEntry) const
{
    const QString path = overrideOf(systemEntry);
    const QByteArray content = definitionText(path);
    // A link leads to a file that somebody keeps elsewhere.
    if (QFileInfo(path).isSymLink() || !isTurnedOffCopy(content))
        return false;
    return isUntouchedCopy(content) ? QFile::remove(path)
                                    : saveWholeFile(path, turnedOnAgain(content)).isEmpty();
}

std::vector<StartupEntry> LinuxStartupControl::setAsideEntries()
{
    std::vector<StartupEntry> entries;
    addAutostart(entries);
    addUnits(entries);
    tellApart(entries);
    return entries;
}

void LinuxStartupControl::addAutostart(std::vector<StartupEntry> &entries) const
{
    const QString folder = textOf(m_folders.autostart);
    for (QDirIterator files(folder, {QStringLiteral("*.desktop.disabled")}, fileKinds); files.hasNext();) {
        const QString path = files.next();
        entries.push_back(entryFrom(definitionText(path), withoutEnding(path), LoginItemScope::userAgent));
    }
    for (QDirIterator files(folder, {QStringLiteral("*.desktop")}, fileKinds | QDir::NoSymLinks);
         files.hasNext();) {
        const QString path = files.next();
        const QString system = systemEntry(files.fileName());
        const QByteArray content = definitionText(path);
        if (!system.isEmpty() && isTurnedOffCopy(content) && !QFileInfo::exists(asideName(path)))
            entries.push_back(entryFrom(content, system, LoginItemScope::globalAgent));
    }
}

void LinuxStartupControl::addUnits(std::vector<StartupEntry> &entries) const
{
    QStringList seen;
    for (QDirIterator targets(textOf(m_folders.units),
                              {QStringLiteral("*.wants"), QStringLiteral("*.requires")}, QDir::Dirs);
         targets.hasNext();)
        for (QDirIterator links(targets.next(),
                                {QStringLiteral("*.service.disabled"), QStringLiteral("*.timer.disabled")},
                                fileKinds);
             links.hasNext();) {
            const QString path = links.next();
            const QString unit = withoutEnding(links.fileName());
            if (seen.contains(unit))
                continue;
            seen.append(unit);
            StartupEntry entry;
            entry.label = textOf(unitLabel(unitFileFrom(definitionText(path).toStdString()),
                                           {unit.toStdString(), m_folders.home}));
            entry.definitionPath = withoutEnding(path);
            entry.scope = LoginItemScope::userAgent;
            entries.push_back(std::move(entry));
        }
}

bool LinuxStartupControl::isUnit(const QString &definitionPath) const
{
    return definitionPath.startsWith(textOf(m_folders.units) + QLatin1Char('/'));
}

bool LinuxStartupControl::isSwabby(const QString &definitionPath) const
{
    return !isUnit(definitionPath) &&
           QFileInfo(definitionPath).fileName() == QLatin1String(ownAutostartEntry);
}

bool LinuxStartupControl::isSystemEntry(const QString &definitionPath) const
{
    const QFileInfo file(definitionPath);
    const std::string folder = QFile::encodeName(file.path()).toStdString();
    return folder != m_folders.autostart &&
           std::find(m_folders.systemAutostart.begin(), m_folders.systemAutostart.end(), folder) !=
               m_folders.systemAutostart.end();
}

QString LinuxStartupControl::systemEntry(const QString &name) const
{
    for (const std::string &folder : m_folders.systemAutostart)
        if (const QString path = textOf(folder) + QLatin1Char('/') + name;
            folder != m_folders.autostart && QFileInfo::exists(path))
            return path;
    return {};
}

QString LinuxStartupControl::overrideOf(const QString &systemEntry) const
{
    return textOf(m_folders.autostart) + QLatin1Char('/') + QFileInfo(systemEntry).fileName();
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
