#include "platform/linux/LinuxLoginService.h"

#include "platform/StartupControl.h"
#include "platform/Utf8.h"
#include "platform/linux/AutostartFiles.h"
#include "platform/linux/AutostartOverride.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/ProgramFolders.h"
#include "platform/posix/RenameWithoutReplacing.h"
#include "platform/posix/WholeFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <system_error>

namespace swabby {
namespace {

/// The path as one argument of an Exec line.
std::string quoted(const std::string &path)
{
    std::string text = "\"";
    for (const char character : path) {
        // A percent sign would begin a field code.
        if (character == '%')
            text += '%';
        // Once for the argument's quotes, once more for the value of the key.
        else if (character == '\\')
            text += "\\\\\\";
        else if (character == '"' || character == '`' || character == '$')
            text += "\\\\";
        text += character;
    }
    return text + '"';
}

/// The path as the value of a key that holds one file's name.
std::string escaped(const std::string &path)
{
    std::string text;
    for (const char character : path)
        text.append(character == '\\' ? 2 : 1, character);
    return text;
}

std::vector<QString> entriesIn(const std::vector<std::string> &folders)
{
    std::vector<QString> entries;
    entries.reserve(folders.size());
    for (const std::string &folder : folders)
        entries.push_back(textOf(folder) + QLatin1Char('/') + QLatin1String(ownAutostartEntry));
    return entries;
}

} // namespace

LinuxLoginService::LinuxLoginService(const std::string &folder, const std::vector<std::string> &systemFolders,
                                     std::string program, std::string desktops)
    : m_folder(textOf(folder)),
      m_entry(entriesIn({folder}).front()),
      m_systemEntries(entriesIn(systemFolders)),
      m_program(std::move(program)),
      m_desktops(std::move(desktops))
{
}

QString LinuxLoginService::systemEntry() const
{
    const auto found = std::find_if(m_systemEntries.begin(), m_systemEntries.end(),
                                    [](const QString &entry) { return QFileInfo::exists(entry); });
    return found == m_systemEntries.end() ? QString() : *found;
}

bool LinuxLoginService::isEnabled()
{
    const QString there = QFileInfo::exists(m_entry) ? m_entry : systemEntry();
    const DesktopEntry entry = desktopEntryFrom(definitionText(there).toStdString());
    const std::vector<std::string> words = withoutEnvironment(execArguments(entry.exec));
    const std::string ownName = m_program.substr(m_program.rfind('/') + 1);
    // An entry that starts a copy that has moved away is as good as none, one for another desktop as well.
    return entry.type == "Application" && !entry.isHidden && entry.isAutostartEnabled &&
           isForDesktop(entry, m_desktops) && !words.empty() &&
           (words.front() == m_program || words.front() == ownName);
}

QString LinuxLoginService::registerAtLogin()
{
    if (!QDir().mkpath(m_folder))
        return textOf(std::generic_category().message(errno));
    // What a person wrote in it is theirs.
    putAsideBack(m_entry);
    if (isUntouchedCopy(definitionText(m_entry)))
        QFile::remove(m_entry);
    if (isEnabled())
        return {};
    const QByteArray program = QByteArray::fromStdString(quoted(m_program));
    const QByteArray start = "Exec=" + program +
                             " --background\nTryExec=" + QByteArray::fromStdString(escaped(m_program)) +
                             "\nX-GNOME-Autostart-enabled=true";
    const QString problem = saveWholeFile(m_entry, startingAs(definitionText(m_entry), start));
    if (problem.isEmpty())
        QFile::remove(asideName(m_entry));
    return problem;
}

QString LinuxLoginService::unregister()
{
    const QFileInfo there(m_entry);
    const bool isThere = there.exists() || there.isSymLink();
    if (isThere && desktopEntryFrom(definitionText(m_entry).toStdString()).isHidden)
        return {};
    if (isThere) {
        QFile::remove(asideName(m_entry)); // an older one of ours
        if (!renameWithoutReplacing(m_entry, asideName(m_entry)))
            return textOf(std::generic_category().message(errno));
    }
    const QString system = systemEntry();
    if (system.isEmpty())
        return {};
    if (!QDir().mkpath(m_folder))
        return textOf(std::generic_category().message(errno));
    const QString problem = saveWholeFile(m_entry, turnedOffCopy(definitionText(system)));
    if (!problem.isEmpty() && isThere)
        renameWithoutReplacing(asideName(m_entry), m_entry);
    return problem;
}

} // namespace swabby
