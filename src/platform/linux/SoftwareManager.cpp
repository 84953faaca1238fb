#include "platform/linux/SoftwareManager.h"

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/KernelFile.h"
#include "platform/linux/ProgramFolders.h"

#include <algorithm>
#include <set>

namespace swabby {
namespace {

/// The desktop whose own it is, empty for anybody's, and what its menu entry is called.
constexpr std::pair<const char *, const char *> known[] = {
    {"KDE", "org.kde.discover"},
    {"LXQt", "org.kde.discover"},
    {"X-Cinnamon", "mintinstall"},
    {"Pantheon", "io.elementary.appcenter"},
    {"", "org.gnome.Software"},
    {"", "mintinstall"},
    {"", "org.kde.discover"},
    {"", "io.elementary.appcenter"},
    {"", "snap-store_snap-store"},
    {"", "org.manjaro.pamac.manager"},
    {"", "pamac-manager"},
    {"", "org.opensuse.yast.SWSingle"},
    {"", "dnfdragora"},
    {"", "org.gnome.Packages"},
    {"", "gpk-application"},
    {"", "synaptic"},
    {"", "muon"},
    {"", "octopi"},
};

bool showsSoftware(const DesktopEntry &entry, const std::string &desktops)
{
    return entry.mimeType.find("x-scheme-handler/appstream;") != std::string::npos && entry.isForDisplay &&
           isForDesktop(entry, desktops);
}

std::optional<SoftwareManager> startedBy(const DesktopEntry &entry, const std::vector<std::string> &searched)
{
    std::vector<std::string> words = execArguments(entry.exec);
    if (entry.type != "Application" || entry.isHidden || words.empty() ||
        (!entry.tryExec.empty() && findProgram(entry.tryExec, searched).empty()))
        return std::nullopt;
    SoftwareManager manager = {entry.name, findProgram(words.front(), searched), {}};
    if (manager.name.empty() || manager.program.empty())
        return std::nullopt;
    manager.arguments.assign(words.begin() + 1, words.end());
    return manager;
}

} // namespace

std::optional<SoftwareManager> findSoftwareManager(const std::vector<std::string> &entryFolders,
                                                   const std::string &desktops,
                                                   const std::vector<std::string> &searched)
{
    for (const auto &[desktop, id] : known) {
        if (*desktop != '\0' && !namesDesktop(desktop, desktops))
            continue;
        const std::string name = '/' + std::string(id) + ".desktop";
        const auto folder = std::find_if(entryFolders.begin(), entryFolders.end(),
                                         [&](const auto &place) { return isThere(place + name); });
        if (folder != entryFolders.end())
            if (auto manager = startedBy(desktopEntryFrom(fileText(*folder + name)), searched))
                return manager;
    }
    std::set<std::string> seen;
    for (const std::string &folder : entryFolders) {
        std::vector<std::string> names = folderEntries(folder);
        std::sort(names.begin(), names.end());
        for (const std::string &name : names) {
            if (!name.ends_with(".desktop") || !seen.insert(name).second)
                continue;
            const DesktopEntry entry = desktopEntryFrom(fileText(folder + '/' + name));
            if (auto manager = showsSoftware(entry, desktops) ? startedBy(entry, searched) : std::nullopt)
                return manager;
        }
    }
    return std::nullopt;
}

} // namespace swabby
