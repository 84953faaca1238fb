#pragma once

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/ProgramFolders.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace swabby {

/// The installed desktop applications, by the programs that run for them. Only entries a person can start
/// from the menu count: none that is hidden or not for display, and no command-line program in a terminal.
/// Not safe for several threads at once.
class DesktopApplications {
public:
    /// The folders hold the desktop entries, the first one of a name wins.
    DesktopApplications(std::vector<std::string> entryFolders, ProgramFolders programs);

    /// Reads the entries again when a folder has changed since. True when that was so.
    bool refresh();

    /// The name of the application a program file belongs to: the one its entry starts, or one in the
    /// application's private folder. Empty when it belongs to none.
    std::string_view nameFor(std::string_view program) const;
    /// Whether the menu has an application of that name among the web browsers.
    bool isBrowser(const std::string &application) const;
    /// The name of the application whose entry starts this script.
    std::string_view nameForScript(const std::string &script) const;
    /// The icon of the application that a program file or folder belongs to, else of the one of that name, as
    /// its entry says: a file's absolute path or a name in the icon theme. Empty when there is none.
    std::string_view iconFor(std::string_view program, const std::string &application) const;
    /// The name of the application that a control group such as
    /// "app-gnome-org.mozilla.firefox-1234.scope" was made for; a whole path is fine too.
    std::string_view nameForControlGroup(std::string_view group) const;

    const ProgramFolders &programs() const { return m_programs; }

private:
    struct Application {
        std::string name;
        std::string icon;
        bool isBrowser = false;
        std::size_t rank = 0; ///< the lowest one names a program that several entries start
    };
    using Index = std::unordered_map<std::string, std::shared_ptr<const Application>>;

    void readAll();
    void add(const std::string &identifier, const DesktopEntry &entry);
    const Application *applicationOf(std::string_view program) const;
    static const Application *find(const Index &index, const std::string &key);
    static std::string_view nameOf(const Application *application);

    const std::vector<std::string> m_entryFolders;
    const ProgramFolders m_programs;
    std::vector<std::int64_t> m_folderTimes;
    Index m_byProgram;
    Index m_byFolder;
    Index m_byIdentifier;
    Index m_byName;
};

} // namespace swabby
