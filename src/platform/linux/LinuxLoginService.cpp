#include "platform/linux/LinuxLoginService.h"

#include "platform/Utf8.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/posix/WholeFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <system_error>

namespace swabby {
namespace {

const QString entryName = QStringLiteral("/com.swabby.app.desktop");

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

} // namespace

LinuxLoginService::LinuxLoginService(const std::string &folder, std::vector<std::string> systemFolders,
                                     std::string program)
    : m_entry(textOf(folder) + entryName),
      m_folder(textOf(folder)),
      m_systemFolders(std::move(systemFolders)),
      m_program(std::move(program))
{
}

bool LinuxLoginService::isEnabled()
{
    QFile file(m_entry);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    constexpr qint64 most = 64 * 1024;
    const DesktopEntry entry = desktopEntryFrom(file.read(most).toStdString());
    const std::vector<std::string> words = execArguments(entry.exec);
    // An entry that starts a copy that has moved away is as good as none.
    return entry.type == "Application" && !entry.isHidden && entry.isAutostartEnabled && !words.empty() &&
           words.front() == m_program;
}

QString LinuxLoginService::registerAtLogin()
{
    if (!QDir().mkpath(m_folder))
        return textOf(std::generic_category().message(errno));
    return saveWholeFile(m_entry, "[Desktop Entry]\n"
                                  "Type=Application\n"
                                  "Name=Swabby\n"
                                  "Comment=Looks after this computer\n"
                                  "Icon=com.swabby.app\n"
                                  "Exec=" +
                                      QByteArray::fromStdString(quoted(m_program)) +
                                      " --background\n"
                                      "X-GNOME-Autostart-enabled=true\n");
}

QString LinuxLoginService::unregister()
{
    const bool isInstalledForAll =
        std::any_of(m_systemFolders.begin(), m_systemFolders.end(),
                    [](const std::string &folder) { return QFileInfo::exists(textOf(folder) + entryName); });
    if (isInstalledForAll)
        return QDir().mkpath(m_folder)
                   ? saveWholeFile(m_entry, "[Desktop Entry]\nType=Application\nName=Swabby\nHidden=true\n")
                   : textOf(std::generic_category().message(errno));
    QFile file(m_entry);
    return !file.exists() || file.remove() ? QString() : file.errorString();
}

} // namespace swabby
