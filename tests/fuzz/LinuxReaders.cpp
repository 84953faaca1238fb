#include "fuzz/Readers.h"
#include "platform/linux/AutostartOverride.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/IconTheme.h"
#include "platform/linux/LinuxCleanupPlaces.h"
#include "platform/linux/LinuxWords.h"
#include "platform/linux/PackageOwner.h"
#include "platform/linux/ProgramFolders.h"
#include "platform/linux/ProgramWindows.h"
#include "platform/linux/TrashRecord.h"
#include "platform/linux/UnitFile.h"
#include "platform/linux/desktop/ToolkitSettings.h"

#include <algorithm>

namespace swabby {
namespace {

using Text = Reader::Text;

bool desktopEntry(Text text)
{
    const DesktopEntry entry = desktopEntryFrom(text);
    const auto words = withoutEnvironment(execArguments(entry.exec));
    isForDesktop(entry, "GNOME:KDE");
    return execArguments(text).size() <= text.size() && words.size() <= entry.exec.size();
}

/// Turned off and on again, and Swabby's own.
bool autostart(Text text)
{
    const QByteArray off = turnedOffCopy(bytesOf(text));
    const QByteArray on = turnedOnAgain(off);
    const QByteArray own = startingAs(bytesOf(text), "Exec=/usr/bin/swabby\n");
    const DesktopEntry start = desktopEntryFrom(own.toStdString());
    return isTurnedOffCopy(off) && isUntouchedCopy(off) && desktopEntryFrom(off.toStdString()).isHidden &&
           !isTurnedOffCopy(on) && !desktopEntryFrom(on.toStdString()).isHidden && !start.isHidden &&
           start.exec == "/usr/bin/swabby" && isForDesktop(start, "KDE");
}

bool unitFile(Text text)
{
    const UnitNames names = {.unit = "backup@photos.service", .home = "/home/nia"};
    const UnitFile unit = unitFileFrom(text);
    unitCommand(text, names);
    const auto words = unitCommand(unit.command, names);
    return !unitLabel(unit, names).empty() && words.size() <= unit.command.size();
}

bool iconTheme(Text text)
{
    const IconTheme theme = iconThemeFrom(text);
    return std::ranges::all_of(theme.directories, [](const IconTheme::Directory &directory) {
        return !directory.path.starts_with('/') && directory.path.find("..") == Text::npos &&
               directory.path.find('\0') == Text::npos;
    });
}

bool userFolders(Text text)
{
    const std::string folder = userFolderIn(text, "DOWNLOAD", "/h").native();
    return folder.empty() || (folder.starts_with('/') && !std::string("/h/").starts_with(folder + '/'));
}

bool trashRecord(Text text)
{
    constexpr double now = 1'790'000'000;
    const std::string path(text.substr(0, text.find('\0')));
    pathOfTrashRecord(text);
    return pathOfTrashRecord(trashRecordText(path, now)) == path;
}

} // namespace

Readers linuxReaders()
{
    return {
        {"desktop_entry", desktopEntry},
        {"autostart", autostart},
        {"unit_file", unitFile},
        {"icon_theme", iconTheme},
        {"user_folders", userFolders},
        {"trash_record", trashRecord},
        {"os_release",
         [](Text text) {
             return !linuxWords(text, std::string(text)).described.contains(QLatin1Char('\n'));
         }},
        {"dpkg_search", [](Text text) { return packageFromSearch(text).find('\n') == Text::npos; }},
        {"windows",
         [](Text text) {
             return std::ranges::all_of(processIdsFrom(text), [](std::int32_t pid) { return pid > 0; });
         }},
        {"toolkit_settings",
         [](Text text) {
             prefersDark(parseToolkitSettings(text));
             return parseToolkitSettings(text).size() <= text.size();
         }},
    };
}

} // namespace swabby
