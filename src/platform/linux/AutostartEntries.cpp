#include "platform/linux/AutostartEntries.h"

#include "platform/Utf8.h"
#include "platform/linux/LinuxLoginService.h"

#include <algorithm>

namespace swabby {

AutostartEntries::AutostartEntries(AutostartFolders folders, ProgramFolders programs,
                                   const std::string &ownProgram)
    : m_folders(std::move(folders)), m_programs(std::move(programs)), m_ownProgram(withoutLinks(ownProgram))
{
}

std::vector<StartupEntry> AutostartEntries::list()
{
    std::vector<std::string> seen;
    std::vector<StartupEntry> entries;
    addFolder(m_folders.user, LoginItemScope::userAgent, seen, entries);
    for (const std::string &folder : m_folders.system)
        addFolder(folder, LoginItemScope::globalAgent, seen, entries);
    return entries;
}

void AutostartEntries::addFolder(const std::string &folder, LoginItemScope scope,
                                 std::vector<std::string> &seen, std::vector<StartupEntry> &entries)
{
    std::vector<std::string> names = folderEntries(folder);
    std::sort(names.begin(), names.end());
    for (const std::string &name : names) {
        constexpr std::string_view suffix = ".desktop";
        if (!name.ends_with(suffix) || std::find(seen.begin(), seen.end(), name) != seen.end())
            continue;
        seen.push_back(name);
        const std::string path = folder + '/' + name;
        const auto entry = m_cache.get(path, desktopEntryFrom);
        if (!entry || !starts(*entry))
            continue;

        const std::string program = startedProgram(execArguments(entry->exec), m_programs.searched);
        const std::string definition = withoutLinks(path);
        const bool isVendorDefined = isVendorDefinition(definition, m_programs.root);
        if (isVendorDefined && (!entry->isForDisplay || entry->isSessionPart))
            continue;

        StartupEntry result;
        result.label =
            textOf(entry->name.empty() ? name.substr(0, name.size() - suffix.size()) : entry->name);
        result.definitionPath = textOf(path);
        result.programPath = textOf(program);
        result.scope = scope;
        result.programIsMissing = !isThere(program);
        result.canBeOverridden = scope == LoginItemScope::globalAgent;
        result.isOwn = name == ownAutostartEntry && withoutLinks(program) == m_ownProgram;
        result.icon = textOf(entry->icon);
        result.isVendorSigned = isVendorDefined && isVendorProgram(withoutLinks(program), m_programs.root);
        entries.push_back(std::move(result));
    }
}

bool AutostartEntries::starts(const DesktopEntry &entry) const
{
    if (entry.type != "Application" || entry.exec.empty() || entry.isHidden || !entry.isAutostartEnabled)
        return false;
    if (!isForDesktop(entry, m_folders.desktops))
        return false;
    return entry.tryExec.empty() || !findProgram(entry.tryExec, m_programs.searched).empty();
}

} // namespace swabby
