#include "platform/linux/DesktopEntry.h"

#include "platform/linux/KernelFile.h"

#include <algorithm>

namespace swabby {

namespace {

/// Undoes the escapes of a string value: \s \n \t \r \\. Exec has others, which are undone later.
std::string unescaped(std::string_view value)
{
    constexpr std::string_view letters = "sntr\\";
    constexpr std::string_view meanings = " \n\t\r\\";
    std::string text;
    for (std::size_t index = 0; index < value.size(); ++index) {
        const std::size_t known = value[index] == '\\' && index + 1 < value.size()
                                      ? letters.find(value[index + 1])
                                      : std::string_view::npos;
        if (known == std::string_view::npos) {
            text += value[index];
        } else {
            text += meanings[known];
            ++index;
        }
    }
    return text;
}

constexpr std::pair<std::string_view, std::string DesktopEntry::*> texts[] = {
    {"Name", &DesktopEntry::name},           {"Type", &DesktopEntry::type},
    {"Exec", &DesktopEntry::exec},           {"Icon", &DesktopEntry::icon},
    {"TryExec", &DesktopEntry::tryExec},     {"X-Flatpak", &DesktopEntry::flatpak},
    {"MimeType", &DesktopEntry::mimeType},   {"OnlyShowIn", &DesktopEntry::onlyShowIn},
    {"NotShowIn", &DesktopEntry::notShowIn}, {"Categories", &DesktopEntry::categories},
};

void setField(DesktopEntry &entry, std::string_view key, std::string_view value)
{
    const bool isTrue = value == "true";
    for (const auto &[name, field] : texts)
        if (key == name)
            entry.*field = unescaped(value);
    if (key == "Hidden")
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
    const std::vector<std::string_view> present = piecesOf(desktops, ':');
    const std::vector<std::string_view> named = piecesOf(list, ';');
    return std::any_of(named.begin(), named.end(), [&](std::string_view name) {
        return std::find(present.begin(), present.end(), trimmed(name)) != present.end();
    });
}

bool isForDesktop(const DesktopEntry &entry, std::string_view desktops)
{
    return (entry.onlyShowIn.empty() || namesDesktop(entry.onlyShowIn, desktops)) &&
           !namesDesktop(entry.notShowIn, desktops);
}

} // namespace swabby
