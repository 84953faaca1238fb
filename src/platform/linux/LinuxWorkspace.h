#pragma once

#include "platform/Shell.h"
#include "platform/StopToken.h"
#include "platform/Workspace.h"

#include <string>
#include <vector>

namespace swabby {

/// The desktop's file manager and settings program, whichever desktop it is.
class LinuxWorkspace final : public Workspace {
public:
    struct Sources {
        std::string sessionBus;                ///< address; may be empty
        std::string desktops;                  ///< colon-separated names of the running desktop, may be empty
        std::vector<std::string> searched;     ///< folders of programs
        std::vector<std::string> entryFolders; ///< of the menu, most important first
        QString autostartFolder; ///< shown where the desktop has no settings for what starts at login
    };

    LinuxWorkspace(Sources sources, Shell &shell, StopToken stop);

    bool reveal(const QString &path) override;
    bool openLoginItemSettings() override;
    QString softwareManager() override;
    bool openSoftwareManager() override;

private:
    bool callFileManager(const char *member, const QString &path);
    bool openFolder(const QString &folder);

    const Sources m_sources;
    Shell &m_shell;
    const StopToken m_stop;
};

} // namespace swabby
