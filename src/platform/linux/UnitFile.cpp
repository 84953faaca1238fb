#include "platform/linux/UnitFile.h"

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/KernelFile.h"

#include <algorithm>

namespace swabby {

namespace {

/// The part of a unit's name before its instance and its type, and the instance of a template.
std::pair<std::string, std::string> prefixAndInstance(std::string_view unit)
{
    const std::string_view stem = unit.substr(0, unit.rfind('.'));
    const std::size_t at = stem.find('@');
    if (at == std::string_view::npos)
        return {std::string(stem), {}};
    return {std::string(stem.substr(0, at)), std::string(stem.substr(at + 1))};
}

/// No value when a placeholder cannot be filled in.
std::optional<std::string> filledIn(std::string_view word, const UnitNames &names)
{
    const auto [prefix, instance] = prefixAndInstance(names.unit);
    std::string text;
    for (std::size_t index = 0; index < word.size(); ++index) {
        if (word[index] != '%' || index + 1 == word.size()) {
            text += word[index];
            continue;
        }
        switch (word[++index]) {
        case '%':
            text += '%';
            break;
        case 'h':
            text += names.home;
            break;
        case 'i':
        case 'I':
            text += instance;
            break;
        case 'n':
            text += names.unit;
            break;
        case 'p':
        case 'P':
            text += prefix;
            break;
        default:
            return std::nullopt;
        }
    }
    return text;
}

void setField(UnitFile &unit, std::string_view line)
{
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        return;
    const std::string_view key = trimmed(line.substr(0, equals));
    const std::string_view value = trimmed(line.substr(equals + 1));
    // An empty ExecStart takes back those before it.
    if (key == "ExecStart" && (unit.command.empty() || value.empty()))
        unit.command = value;
    else if (key == "Unit")
        unit.activates = value;
    else if (key == "Description")
        unit.description = value;
}

} // namespace

UnitFile unitFileFrom(std::string_view text)
{
    UnitFile unit;
    std::string whole;
    while (const auto line = nextLine(text)) {
        const std::string_view content = trimmed(*line);
        if (content.starts_with('#') || content.starts_with(';'))
            continue;
        if (content.ends_with('\\')) {
            whole.append(content.substr(0, content.size() - 1)).append(" ");
            continue;
        }
        whole.append(content);
        setField(unit, whole);
        whole.clear();
    }
    return unit;
}

std::string unitLabel(const UnitFile &unit, const UnitNames &names)
{
    const std::string label = filledIn(unit.description, names).value_or(std::string());
    return label.empty() ? names.unit : label;
}

std::vector<std::string> unitCommand(std::string_view command, const UnitNames &names)
{
    command.remove_prefix(std::min(command.find_first_not_of("@-:+!|"), command.size()));
    // The quoting is that of desktop entries, but for the percent sign: it is kept from their field codes
    // by doubling it.
    std::string quoted;
    for (const char character : command)
        quoted.append(character == '%' ? 2 : 1, character);

    std::vector<std::string> words;
    for (const std::string &word : execArguments(quoted)) {
        auto filled = filledIn(word, names);
        if (!filled && words.empty())
            return {};
        words.push_back(filled.value_or(word));
    }
    return words;
}

} // namespace swabby
