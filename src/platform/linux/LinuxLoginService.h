#pragma once

#include "platform/LoginService.h"

#include <string>
#include <vector>

namespace swabby {

/// What Swabby's own entry is called in every autostart folder.
inline constexpr auto ownAutostartEntry = "com.swabby.app.desktop";

/// Swabby's own autostart entry: a desktop entry in the user's folder that starts the running program with
/// --background. One that is turned off is kept beside its place, with ".disabled" behind its name. Where the
/// system's folders have an entry of that name too, off is written down as hidden, or theirs would start.
class LinuxLoginService final : public LoginService {
public:
    /// The user's autostart folder, the system's, the absolute path of the program to start, and the
    /// colon-separated names of the running desktop.
    LinuxLoginService(const std::string &folder, const std::vector<std::string> &systemFolders,
                      std::string program, std::string desktops = {});

    bool isEnabled() override;
    QString registerAtLogin() override;
    QString unregister() override;

private:
    /// Of the system's folders; empty when they have none.
    QString systemEntry() const;

    const QString m_folder;
    const QString m_entry;
    const std::vector<QString> m_systemEntries;
    const std::string m_program;
    const std::string m_desktops;
};

} // namespace swabby
