#pragma once

#include "platform/LoginService.h"

#include <string>
#include <vector>

namespace swabby {

/// Swabby's own autostart entry: a desktop entry in the user's folder that starts the running program with
/// --background. Where the system's folders have an entry of that name too, off is written down as hidden, or
/// theirs would start.
class LinuxLoginService final : public LoginService {
public:
    /// The user's autostart folder, the system's, and the absolute path of the program to start.
    LinuxLoginService(const std::string &folder, std::vector<std::string> systemFolders, std::string program);

    bool isEnabled() override;
    QString registerAtLogin() override;
    QString unregister() override;

private:
    const QString m_entry;
    const QString m_folder;
    const std::vector<std::string> m_systemFolders;
    const std::string m_program;
};

} // namespace swabby
