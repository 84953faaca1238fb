#include "platform/linux/LinuxApplicationSource.h"

#include "platform/FolderListing.h"
#include "platform/Utf8.h"
#include "platform/linux/KernelFile.h"

#include <algorithm>
#include <array>

namespace swabby {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view entrySuffix = ".desktop";

/// In the XDG folders these belong to everybody, whatever an application is called.
constexpr std::array sharedNames = {
    "applications",  "autostart",
    "dconf",         "desktop-directories",
    "environment.d", "flatpak",
    "fontconfig",    "fonts",
    "gtk-2.0",       "gtk-3.0",
    "gtk-4.0",       "icons",
    "keyrings",      "mime",
    "menus",         "pulse",
    "sounds",        "systemd",
    "themes",        "thumbnails",
    "Trash",         "xdg-desktop-portal",
};

char lowered(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::string lowered(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) { return lowered(letter); });
    return text;
}

bool isImageName(const fs::path &path)
{
    return lowered(path.extension().native()) == ".appimage";
}

/// "blender", "blender4" and "blender-4.0" are called after "blender", "blender-pictures" is not.
bool isCalledAfter(const std::string &folder, const std::string &name)
{
    if (name.empty() || !lowered(folder).starts_with(lowered(name)))
        return false;
    std::string_view version = std::string_view(folder).substr(name.size());
    if (!version.empty() && std::string_view("-_. ").find(version.front()) != std::string_view::npos)
        version.remove_prefix(1);
    return version.empty() ? folder.size() == name.size() : version.front() >= '0' && version.front() <= '9';
}

} // namespace

std::vector<FoundApplication> LinuxApplicationSource::applications()
{
    std::vector<FoundApplication> found;
    for (Started &started : startedApplications())
        found.push_back(std::move(started.application));
    return found;
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
    for (const char *folder : {"Applications", ".local/bin", "bin"})
        addImages(m_folders.home / folder, found);
    return found;
}

std::optional<LinuxApplicationSource::Started>
LinuxApplicationSource::fromEntry(const std::string &id, const DesktopEntry &entry) const
{
    if (entry.type != "Application" || entry.isHidden || !entry.isForDisplay || textOf(id) == m_ownId)
        return std::nullopt;
    const std::vector<std::string> words = execArguments(entry.exec);
    const std::string started = startedProgram(words, m_programs.searched);
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
        // A program in a folder that is not plainly its own may lie among somebody's work: that is
        // not ours to judge, and neither is a folder somebody develops it in.
        const fs::path folder = privateFolder(program.native(), resolvedPrograms);
        const std::string name = folder.filename().native();
        const bool isItsOwn = isCalledAfter(name, program.stem().native()) || isCalledAfter(name, entry.name);
        if (!isItsOwn || !isUnder(folder, home) || isThere((folder / ".git").native()))
            return std::nullopt;
        application.path = folder;
        application.foundIn = folder.parent_path();
    }
    return Started{std::move(application), program, words.size()};
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
        if (!isImageName(file) || !isProgram || name == m_ownId ||
            std::any_of(found.begin(), found.end(),
                        [&](const Started &other) { return other.program == file; }))
            continue;
        found.push_back(
            {FoundApplication{.path = file, .name = name, .bundleId = name, .foundIn = file.parent_path()},
             file});
    }
}

std::vector<LeftoverPlace> LinuxApplicationSource::leftoverPlaces(const QString &name,
                                                                  const QString &bundleId) const
{
    std::vector<std::string> names;
    for (const QString &word : {bundleId, name}) {
        const std::string text = word.toStdString();
        const bool isShared = std::any_of(sharedNames.begin(), sharedNames.end(), [&](const char *shared) {
            return lowered(text) == lowered(std::string(shared));
        });
        if (isOneFileName(word) && !isShared && std::find(names.begin(), names.end(), text) == names.end())
            names.push_back(text);
    }
    std::vector<LeftoverPlace> places;
    const auto add = [&](const fs::path &folder, const char *description) {
        for (const std::string &text : names)
            places.push_back({folder, text, QString::fromLatin1(description)});
    };
    add(m_folders.cache, "Cached data");
    add(m_folders.data, "Support files");
    add(m_folders.config, "Preferences");
    add(m_folders.state, "Saved state");
    if (isOneFileName(bundleId)) {
        places.push_back(
            {m_folders.home / ".var/app", bundleId.toStdString(), QStringLiteral("Sandboxed app data")});
        places.push_back({m_folders.data / "applications", bundleId.toStdString() + std::string(entrySuffix),
                          QStringLiteral("Menu entry")});
    }
    return places;
}

} // namespace swabby
