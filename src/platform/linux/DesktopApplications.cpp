#include "platform/linux/DesktopApplications.h"

#include "platform/linux/KernelFile.h"

#include <QtCore/QByteArray>
#include <sys/stat.h>

#include <algorithm>
#include <set>

namespace swabby {

namespace {

/// When a folder last changed, in nanoseconds; -1 when there is none.
std::int64_t changeTime(const std::string &folder)
{
    struct stat status = {};
    if (::stat(folder.c_str(), &status) != 0)
        return -1;
    return status.st_mtim.tv_sec * 1'000'000'000LL + status.st_mtim.tv_nsec;
}

/// What the browser's maker calls it elsewhere: browsers are told apart by this name.
std::string applicationName(const DesktopEntry &entry)
{
    if (entry.name == "Brave" || entry.name.starts_with("Brave Web Browser"))
        return "Brave Browser";
    return entry.name;
}

/// Undoes the \x2d writing that unit names use for characters with a meaning there.
std::string unescapedUnitName(std::string_view name)
{
    return QByteArray(name.data(), static_cast<qsizetype>(name.size()))
        .replace("\\x", "\\")
        .percentDecoded('\\')
        .toStdString();
}

} // namespace

DesktopApplications::DesktopApplications(std::vector<std::string> entryFolders, ProgramFolders programs)
    : m_entryFolders(std::move(entryFolders)), m_programs(std::move(programs))
{
}

bool DesktopApplications::refresh()
{
    std::vector<std::int64_t> times;
    std::transform(m_entryFolders.begin(), m_entryFolders.end(), std::back_inserter(times), changeTime);
    if (times == m_folderTimes)
        return false;
    m_folderTimes = std::move(times);
    readAll();
    return true;
}

std::string_view DesktopApplications::nameFor(std::string_view program) const
{
    return nameOf(applicationOf(program));
}

const DesktopApplications::Application *DesktopApplications::applicationOf(std::string_view program) const
{
    const std::string path(program);
    if (const Application *application = find(m_byProgram, path))
        return application;
    for (std::string_view folder = parentFolder(path); !folder.empty(); folder = parentFolder(folder)) {
        if (const Application *application = find(m_byFolder, std::string(folder)))
            return application;
    }
    return nullptr;
}

bool DesktopApplications::isBrowser(const std::string &application) const
{
    const Application *found = find(m_byName, application);
    return found && found->isBrowser;
}

std::string_view DesktopApplications::nameForScript(const std::string &script) const
{
    return nameOf(find(m_byProgram, script));
}

std::string_view DesktopApplications::iconFor(std::string_view program, const std::string &application) const
{
    const Application *found = find(m_byFolder, std::string(program));
    if (!found)
        found = applicationOf(program);
    if (!found)
        found = find(m_byName, application);
    return found ? std::string_view(found->icon) : std::string_view();
}

std::string_view DesktopApplications::nameForControlGroup(std::string_view group) const
{
    // app[-LAUNCHER]-IDENTIFIER-NUMBER.scope or app[-LAUNCHER]-IDENTIFIER[@NUMBER].service
    std::string_view unit = fileName(trimmed(group));
    if (!unit.starts_with("app-"))
        return {};
    unit.remove_prefix(std::string_view("app-").size());
    const bool isScope = unit.ends_with(".scope");
    unit = unit.substr(0, unit.rfind('.'));
    unit = unit.substr(0, isScope ? unit.rfind('-') : unit.rfind('@'));

    const std::string_view name = nameOf(find(m_byIdentifier, unescapedUnitName(unit)));
    const std::size_t launcherEnd = unit.find('-');
    if (!name.empty() || launcherEnd == std::string_view::npos)
        return name;
    return nameOf(find(m_byIdentifier, unescapedUnitName(unit.substr(launcherEnd + 1))));
}

void DesktopApplications::readAll()
{
    constexpr std::string_view suffix = ".desktop";
    m_byProgram.clear();
    m_byFolder.clear();
    m_byIdentifier.clear();
    m_byName.clear();
    std::set<std::string> seen;
    for (const std::string &folder : m_entryFolders) {
        std::vector<std::string> names = folderEntries(folder);
        std::sort(names.begin(), names.end());
        for (const std::string &name : names) {
            if (!name.ends_with(suffix) || !seen.insert(name).second)
                continue;
            const DesktopEntry entry = desktopEntryFrom(fileText(folder + '/' + name));
            if (entry.type == "Application" && !entry.name.empty() && !entry.isHidden && entry.isForDisplay &&
                !entry.needsTerminal)
                add(name.substr(0, name.size() - suffix.size()), entry);
        }
    }
}

void DesktopApplications::add(const std::string &identifier, const DesktopEntry &entry)
{
    const std::vector<std::string> words = withoutEnvironment(execArguments(entry.exec));
    // Web pages, games and single documents put on the menu start the same program with more arguments.
    const bool isBrowser = std::ranges::count(piecesOf(entry.categories, ';'), "WebBrowser") > 0;
    const auto application = std::make_shared<const Application>(
        Application{applicationName(entry), entry.icon, isBrowser, words.size()});
    const auto put = [&](Index &index, const std::string &key) {
        auto &place = index[key];
        if (!place || application->rank < place->rank)
            place = application;
    };

    put(m_byIdentifier, identifier);
    put(m_byName, application->name);
    if (!entry.flatpak.empty())
        put(m_byIdentifier, entry.flatpak);

    const std::string command =
        words.empty() ? std::string() : findProgram(words.front(), m_programs.searched);
    if (command.empty())
        return;
    // Every command of a snap is a link to the one program that starts them all.
    if (parentFolder(command) == m_programs.root + "/snap/bin") {
        const std::string_view name = fileName(command);
        put(m_byFolder, m_programs.root + "/snap/" + std::string(name.substr(0, name.find('.'))));
        return;
    }

    const std::string program = withoutLinks(command);
    if (!isInterpreter(command) && !isInterpreter(program)) {
        put(m_byProgram, program);
        if (const std::string folder = privateFolder(program, m_programs); !folder.empty())
            put(m_byFolder, folder);
        return;
    }
    const auto script = std::find_if(words.begin() + 1, words.end(),
                                     [](const std::string &word) { return word.starts_with('/'); });
    if (script != words.end())
        put(m_byProgram, withoutLinks(*script));
}

const DesktopApplications::Application *DesktopApplications::find(const Index &index, const std::string &key)
{
    const auto found = index.find(key);
    return found == index.end() ? nullptr : found->second.get();
}

std::string_view DesktopApplications::nameOf(const Application *application)
{
    return application ? std::string_view(application->name) : std::string_view();
}

} // namespace swabby
