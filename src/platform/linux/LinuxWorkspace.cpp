#include "platform/linux/LinuxWorkspace.h"

#include "platform/Utf8.h"
#include "platform/linux/BusCall.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/ProgramFolders.h"
#include "platform/linux/SoftwareManager.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QUrl>

namespace swabby {
namespace {

/// A file manager may have to be started first.
constexpr std::chrono::milliseconds fileManagerPatience{5'000};

/// Each desktop's own page for what starts at login.
struct SettingsProgram {
    const char *desktop;
    const char *program;
    std::vector<std::string> arguments;
};

const std::vector<SettingsProgram> &settingsPrograms()
{
    static const std::vector<SettingsProgram> all = {
        {"KDE", "systemsettings", {"kcm_autostart"}},
        {"KDE", "systemsettings5", {"kcm_autostart"}},
        {"XFCE", "xfce4-session-settings", {}},
        {"MATE", "mate-session-properties", {}},
        {"X-Cinnamon", "cinnamon-settings", {"startup"}},
        {"LXQt", "lxqt-config-session", {}},
        {"Budgie", "budgie-desktop-settings", {}},
        {"GNOME", "gnome-tweaks", {}},
        {"GNOME", "gnome-session-properties", {}},
        {"Unity", "gnome-session-properties", {}},
        {"LXDE", "lxsession-edit", {}},
    };
    return all;
}

} // namespace

LinuxWorkspace::LinuxWorkspace(Sources sources, Shell &shell, StopToken stop)
    : m_sources(std::move(sources)), m_shell(shell), m_stop(std::move(stop))
{
}

bool LinuxWorkspace::reveal(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists() && !file.isSymLink())
        return false;
    return callFileManager("ShowItems", path) || openFolder(file.absolutePath());
}

bool LinuxWorkspace::openLoginItemSettings()
{
    for (const SettingsProgram &settings : settingsPrograms()) {
        const std::string program = namesDesktop(settings.desktop, m_sources.desktops)
                                        ? findProgram(settings.program, m_sources.searched)
                                        : std::string();
        if (!program.empty() && m_shell.launch(program, settings.arguments))
            return true;
    }
    // What starts at login is a folder here, and people can see into it.
    QDir().mkpath(m_sources.autostartFolder);
    return callFileManager("ShowFolders", m_sources.autostartFolder) || openFolder(m_sources.autostartFolder);
}

QString LinuxWorkspace::softwareManager()
{
    const auto manager = findSoftwareManager(m_sources.entryFolders, m_sources.desktops, m_sources.searched);
    return manager ? textOf(manager->name) : QString();
}

bool LinuxWorkspace::openSoftwareManager()
{
    const auto manager = findSoftwareManager(m_sources.entryFolders, m_sources.desktops, m_sources.searched);
    return manager && m_shell.launch(manager->program, manager->arguments);
}

bool LinuxWorkspace::callFileManager(const char *member, const QString &path)
{
    const auto end = Steady::now() + fileManagerPatience;
    const Bus bus = connectBus(m_sources.sessionBus, end, m_stop);
    if (!bus)
        return false;
    BusMessage question =
        busQuestion(bus.get(), "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                    "org.freedesktop.FileManager1", member, ServiceStart::whenNeeded);
    const QByteArray url = QUrl::fromLocalFile(path).toEncoded();
    return question && sd_bus_message_append(question.get(), "ass", 1, url.constData(), "") >= 0 &&
           busAnswer(bus.get(), std::move(question), end) != nullptr;
}

bool LinuxWorkspace::openFolder(const QString &folder)
{
    const std::string opener = findProgram("xdg-open", m_sources.searched);
    return !opener.empty() && m_shell.launch(opener, {QFile::encodeName(folder).toStdString()});
}

} // namespace swabby
