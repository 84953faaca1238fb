#include "platform/linux/DesktopEntry.h"

#include "platform/linux/KernelFile.h"

namespace swabby {

namespace {

/// Undoes the escapes of a string value: \s \n \t \r \\.
std::string unescaped(std::string_view value)
{
    std::string text;
    for (std::size_t index = 0; index < value.size(); ++index) {
        if (value[index] != '\\' || index + 1 == value.size()) {
            text += value[index];
            continue;
        }
        switch (value[++index]) {
        case 's':
            text += ' ';
            break;
        case 'n':
            text += '\n';
            break;
        case 't':
            text += '\t';
            break;
        case 'r':
            text += '\r';
            break;
        case '\\':
            text += '\\';
            break;
        default: // Exec has escapes of its own, undone later
            text += '\\';
            text += value[index];
        }
    }
    return text;
}

void setField(DesktopEntry &entry, std::string_view key, std::string_view value)
{
    const bool isTrue = value == "true";
    if (key == "Name")
        entry.name = unescaped(value);
    else if (key == "Type")
        entry.type = value;
    else if (key == "Exec")
        entry.exec = unescaped(value);
    else if (key == "Icon")
        entry.icon = unescaped(value);
    else if (key == "TryExec")
        entry.tryExec = unescaped(value);
    else if (key == "X-Flatpak")
        entry.flatpak = value;
    else if (key == "OnlyShowIn")
        entry.onlyShowIn = value;
    else if (key == "NotShowIn")
        entry.notShowIn = value;
    else if (key == "Hidden")
        entry.isHidden = isTrue;
    else if (key == "NoDisplay")
        entry.isForDisplay = !isTrue;
    else if (key == "Terminal")
        entry.needsTerminal = isTrue;
    else if (key == "X-GNOME-Autostart-enabled")
        entry.isAutostartEnabled = value != "false";
    else if (key == "X-GNOME-Autostart-Phase" || key == "X-KDE-autostart-phase")
        entry.isSessionPart = true;
    else if (key == "X-GNOME-HiddenUnderSystemd")
        entry.isSessionPart = entry.isSessionPart || isTrue;
}

} // namespace

DesktopEntry desktopEntryFrom(std::string_view text)
{
    DesktopEntry entry;
    bool isInEntry = false;
    while (const auto line = nextLine(text)) {
        const std::string_view content = trimmed(*line);
        if (content.empty() || content.front() == '#')
            continue;
        if (content.front() == '[') {
            if (isInEntry)
                break; // the entry's own group comes first; actions follow
            isInEntry = content == "[Desktop Entry]";
            continue;
        }
        const std::size_t equals = content.find('=');
        if (isInEntry && equals != std::string_view::npos)
            setField(entry, trimmed(content.substr(0, equals)), trimmed(content.substr(equals + 1)));
    }
    return entry;
}

std::vector<std::string> execArguments(std::string_view exec)
{
    std::vector<std::string> arguments;
    std::string argument;
    bool isQuoted = false;
    bool hasArgument = false;
    const auto finish = [&] {
        if (hasArgument)
            arguments.push_back(std::exchange(argument, {}));
        hasArgument = false;
    };

    for (std::size_t index = 0; index < exec.size(); ++index) {
        const char character = exec[index];
        const bool hasNext = index + 1 < exec.size();
        if (character == '"') {
            isQuoted = !isQuoted;
            hasArgument = true;
        } else if (character == '\\' && hasNext) {
            argument += exec[++index];
            hasArgument = true;
        } else if (!isQuoted && (character == ' ' || character == '\t')) {
            finish();
        } else if (character == '%' && hasNext && (!isQuoted || exec[index + 1] == '%')) {
            if (exec[++index] == '%') {
                argument += '%';
                hasArgument = true;
            }
        } else {
            argument += character;
            hasArgument = true;
        }
    }
    finish();
    return arguments;
}

bool namesDesktop(std::string_view list, std::string_view desktops)
{
    while (!list.empty()) {
        const std::size_t end = list.find(';');
        const std::string_view wanted = trimmed(list.substr(0, end));
        for (std::string_view rest = desktops; !wanted.empty() && !rest.empty();) {
            const std::size_t colon = rest.find(':');
            if (rest.substr(0, colon) == wanted)
                return true;
            rest.remove_prefix(colon == std::string_view::npos ? rest.size() : colon + 1);
        }
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
    }
    return false;
}

} // namespace swabby
