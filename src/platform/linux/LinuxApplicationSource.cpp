#include "platform/linux/LinuxApplicationSource.h"

#include "platform/FolderListing.h"
#include "platform/Utf8.h"
#include "platform/linux/ApplicationNames.h"
#include "platform/linux/KernelFile.h"

#include <algorithm>
#include <array>

namespace swabby {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view entrySuffix = ".desktop";

/// In the XDG folders these belong to everybody or to Swabby, whatever an application is called.
constexpr std::array sharedNames = {
    "applications",  "autostart",  "dconf",      "desktop-directories",
    "environment.d", "flatpak",    "fontconfig", "fonts",
    "glib-2.0",      "gtk-2.0",    "gtk-3.0",    "gtk-4.0",
    "icons",         "keyrings",   "mime",       "menus",
    "pulse",         "sounds",     "Swabby",     "systemd",
    "themes",        "thumbnails", "Trash",      "xdg-desktop-portal",
};

/// Where the user keeps application images.
constexpr std::array imageFolders = {"Applications", ".local/bin", "bin"};

/// Whether nobody but programs keeps files in there, whatever the variables say: not in the home folder
/// itself, in what is in plain sight in it, or outside, where others may keep theirs too.
bool isForPrograms(const fs::path &folder, const fs::path &home)
{
    const fs::path top = resolved(home);
    const fs::path place = resolved(folder);
    return isUnder(place, top) && place.lexically_relative(top).native().starts_with('.');
}

InstalledNames installedNames(const UserFolders &folders, const ProgramFolders &programs,
                              const std::vector<std::string> &entryFolders)
{
    const CleanupPlaces places = linuxCleanupPlaces(folders);
    InstalledNames installed = {.entryFolders = {entryFolders.begin(), entryFolders.end()},
                                .imageFolders = {places.downloads, places.desktop},
                                .packageFolders = {folders.data / "flatpak/app"},
                                .searched = programs.searched};
    for (const char *folder : imageFolders)
        installed.imageFolders.push_back(folders.home / folder);
    for (const char *folder : {"/var/lib/dpkg/info", "/var/lib/flatpak/app", "/snap"})
        installed.packageFolders.emplace_back(programs.root + folder);
    return installed;
}

} // namespace

std::vector<FoundApplication> LinuxApplicationSource::applications()
{
    std::vector<std::string> own = m_own.programs;
    const fs::path ownEntry = m_folders.data / "applications" / (m_own.id + std::string(entrySuffix));
    own.push_back(programOf(desktopEntryFrom(fileText(ownEntry.native()))));
    std::ranges::transform(own, own.begin(), withoutLinks);
    const auto isSwabby = [&](const fs::path &application) {
        const std::string name = application.filename().native();
        return beginsWithName(name, m_own.name) || beginsWithName(name, m_own.id) ||
               std::ranges::any_of(
                   own, [&](const std::string &program) { return isAtOrUnder(program, application); });
    };
    std::vector<FoundApplication> found;
    for (Started &started : startedApplications())
        if (!isSwabby(started.application.path))
            found.push_back(std::move(started.application));
    return found;
}

std::string LinuxApplicationSource::programOf(const DesktopEntry &entry) const
{
    return startedProgram(execArguments(entry.exec), m_programs.searched);
}

std::vector<LinuxApplicationSource::Started> LinuxApplicationSource::startedApplications() const
{
    std::vector<Started> found;
    const fs::path entries = m_folders.data / "applications";
    std::vector<std::string> names = folderEntries(entries.native());
    std::sort(names.begin(), names.end());
    for (const std::string &name : names) {
        if (!name.ends_with(entrySuffix))
            continue;
        const std::string id = name.substr(0, name.size() - entrySuffix.size());
        auto started = fromEntry(id, desktopEntryFrom(fileText((entries / name).native())));
        if (!started)
            continue;
        const auto same = std::find_if(found.begin(), found.end(), [&](const Started &other) {
            return other.application.path == started->application.path;
        });
        // Of several entries the ones with more words open a page or a document.
        if (same == found.end())
            found.push_back(std::move(*started));
        else if (started->words < same->words)
            *same = std::move(*started);
    }
    for (const char *folder : imageFolders)
        addImages(m_folders.home / folder, found);
    return found;
}

std::optional<LinuxApplicationSource::Started>
LinuxApplicationSource::fromEntry(const std::string &id, const DesktopEntry &entry) const
{
    if (entry.type != "Application" || entry.isHidden || !entry.isForDisplay || id == m_own.id)
        return std::nullopt;
    const std::string started = programOf(entry);
    const fs::path program = withoutLinks(started);
    const fs::path home = withoutLinks(m_folders.home.native());
    if (!isThere(started) || isInterpreter(program.native()) || !isUnder(program, home))
        return std::nullopt;

    ProgramFolders resolvedPrograms = m_programs;
    resolvedPrograms.home = home.native();
    FoundApplication application = {.path = program,
                                    .name = textOf(entry.name.empty() ? id : entry.name),
                                    .bundleId = textOf(id),
                                    .foundIn = program.parent_path()};
    if (!isSharedFolder(program.parent_path().native(), resolvedPrograms) && !isImageName(program)) {
        // A program in a folder that is not plainly its own may lie among somebody's work, and a folder
        // directly in home may be somebody's whatever it is called: that is not ours to judge.
        const fs::path folder = privateFolder(program.native(), resolvedPrograms);
        const std::string name = folder.filename().native();
        const bool isItsOwn = isCalledAfter(name, program.stem().native()) || isCalledAfter(name, entry.name);
        if (!isItsOwn || !isUnder(folder, home) || folder.parent_path() == home)
            return std::nullopt;
        application.path = folder;
        application.foundIn = folder.parent_path();
    }
    return Started{std::move(application), program, execArguments(entry.exec).size()};
}

void LinuxApplicationSource::addImages(const fs::path &folder, std::vector<Started> &found) const
{
    std::vector<fs::path> files = childrenOf(withoutLinks(folder.native()));
    std::sort(files.begin(), files.end());
    for (const fs::path &file : files) {
        const QString name = textOf(file.stem().native());
        std::error_code problem;
        const fs::file_status status = fs::symlink_status(file, problem);
        const bool isProgram = !problem && fs::is_regular_file(status) &&
                               (status.permissions() & fs::perms::owner_exec) != fs::perms::none;
        if (!isImageName(file) || !isProgram ||
            std::any_of(found.begin(), found.end(),
                        [&](const Started &other) { return other.program == file; }))
            continue;
        found.push_back(
            {FoundApplication{.path = file, .name = name, .bundleId = name, .foundIn = file.parent_path()},
             file});
    }
}

std::vector<LeftoverPlace> LinuxApplicationSource::leftoverPlaces(const FoundApplication &application) const
{
    const QString &bundleId = application.bundleId;
    std::vector<std::string> names;
    const bool isShared = hasNamesake(application, installedNames(m_folders, m_programs, m_entryFolders));
    for (const QString &word : {bundleId, application.name}) {
        const std::string text = word.toStdString();
        const bool isEverybodys = std::ranges::any_of(sharedNames, [&](const char *shared) {
            return word.compare(QLatin1String(shared), Qt::CaseInsensitive) == 0;
        });
        if (!isShared && isOneFileName(word) && !isEverybodys && std::ranges::count(names, text) == 0)
            names.push_back(text);
    }
    std::vector<LeftoverPlace> places;
    const auto add = [&](const fs::path &folder, const char *description) {
        for (const std::string &text : names)
            places.push_back({folder, text, QString::fromLatin1(description)});
    };
    if (!m_folders.cache.empty())
        add(m_folders.cache, "Cached data");
    for (const auto &[folder, description] :
         {std::pair(m_folders.data, "Support files"), std::pair(m_folders.config, "Preferences"),
          std::pair(m_folders.state, "Saved state")})
        if (isForPrograms(folder, m_folders.home))
            add(folder, description);
    if (isOneFileName(bundleId) && !isShared)
        places.push_back(
            {m_folders.home / ".var/app", bundleId.toStdString(), QStringLiteral("Sandboxed app data")});
    const fs::path entries = m_folders.data / "applications";
    const std::string entry = bundleId.toStdString() + std::string(entrySuffix);
    // Whatever else goes by its name, this one would start nothing any more.
    if (isOneFileName(bundleId) && startsFrom(application.path, entries / entry, m_programs.searched))
        places.push_back({entries, entry, QStringLiteral("Menu entry")});
    return places;
}

} // namespace swabby
