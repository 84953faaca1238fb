#pragma once

#include "platform/Permissions.h"
#include "platform/Places.h"
#include "platform/Shell.h"
#include "platform/StartupSource.h"

namespace swabby {

/// Launch agents, launch daemons and classic login items. Two tools run for every listed job.
class MacStartupSource final : public StartupSource {
public:
    /// Whether the classic login items were refused is noted.
    MacStartupSource(Shell &shell, Places places, Permissions &permissions)
        : m_shell(shell), m_places(std::move(places)), m_permissions(permissions)
    {
    }
    std::vector<StartupEntry> entries() override;

private:
    void addFolder(const QString &folder, LoginItemScope scope, std::vector<StartupEntry> &entries);
    void addClassicItems(std::vector<StartupEntry> &entries);

    Shell &m_shell;
    Places m_places;
    Permissions &m_permissions;
};

} // namespace swabby
