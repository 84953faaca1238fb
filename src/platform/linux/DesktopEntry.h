#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace swabby {

/// What a desktop entry file says about the program it starts, as far as Swabby uses it.
struct DesktopEntry {
    std::string name; ///< as written for no language in particular
    std::string type;
    std::string exec;
    std::string icon; ///< a file's absolute path or a name in the icon theme
    std::string tryExec;
    std::string flatpak;  ///< identifier of the sandboxed application
    std::string mimeType; ///< what it opens, a semicolon behind each
    std::string onlyShowIn;
    std::string notShowIn;
    std::string categories; ///< as "Network;WebBrowser;"
    bool isHidden = false;
    bool isForDisplay = true;
    bool needsTerminal = false;
    bool isAutostartEnabled = true;
    bool isSessionPart = false; ///< belongs to a desktop session's own start sequence
};

/// An entry without a type when the text has no [Desktop Entry] group.
DesktopEntry desktopEntryFrom(std::string_view text);

/// Splits an Exec line into the program and its arguments: quotes and escapes undone, field codes such as
/// %U left out.
std::vector<std::string> execArguments(std::string_view exec);

/// Whether a list such as "GNOME;KDE;" names one of the colon-separated desktops.
bool namesDesktop(std::string_view list, std::string_view desktops);

/// Whether the entry is meant for one of the colon-separated desktops.
bool isForDesktop(const DesktopEntry &entry, std::string_view desktops);

} // namespace swabby
