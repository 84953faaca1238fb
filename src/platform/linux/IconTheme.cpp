#include "platform/linux/IconTheme.h"

#include "platform/linux/KernelFile.h"

#include <charconv>
#include <unordered_map>

namespace swabby {
namespace {

constexpr int largestSize = 4096;

bool staysBelow(std::string_view path)
{
    return !path.empty() && !path.starts_with('/') && path.find("..") == std::string_view::npos &&
           path.find('\0') == std::string_view::npos;
}

int numberFrom(std::string_view value, int otherwise)
{
    int number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    return error == std::errc() && number > 0 && number <= largestSize ? number : otherwise;
}

/// Where programs' icons are; the rest are arrows, file types and the like.
bool mayHoldPrograms(std::string_view context)
{
    return context.empty() || context == "Applications" || context == "Categories" || context == "Devices" ||
           context == "Legacy";
}

using Values = std::unordered_map<std::string_view, std::string_view>;

std::string_view valueOf(const Values &values, std::string_view key)
{
    const auto found = values.find(key);
    return found == values.end() ? std::string_view() : found->second;
}

} // namespace

IconTheme iconThemeFrom(std::string_view index)
{
    std::unordered_map<std::string_view, Values> groups;
    std::string_view group;
    while (const auto line = nextLine(index)) {
        const std::string_view content = trimmed(*line);
        const std::size_t equals = content.find('=');
        if (content.starts_with('[') && content.ends_with(']'))
            group = content.substr(1, content.size() - 2);
        else if (!content.starts_with('#') && equals != std::string_view::npos)
            groups[group].emplace(trimmed(content.substr(0, equals)), trimmed(content.substr(equals + 1)));
    }

    const Values &head = groups["Icon Theme"];
    IconTheme theme;
    for (const std::string_view parent : piecesOf(valueOf(head, "Inherits"), ','))
        theme.parents.emplace_back(trimmed(parent));
    for (const char *key : {"Directories", "ScaledDirectories"}) {
        for (const std::string_view piece : piecesOf(valueOf(head, key), ',')) {
            const std::string_view path = trimmed(piece);
            const auto found = groups.find(path);
            if (found == groups.end() || !staysBelow(path) ||
                !mayHoldPrograms(valueOf(found->second, "Context")))
                continue;
            const Values &values = found->second;
            const int size = numberFrom(valueOf(values, "Size"), 0);
            const int scale = numberFrom(valueOf(values, "Scale"), 1);
            const std::string_view type = valueOf(values, "Type");
            const int tolerance = type == "Fixed" ? 0 : numberFrom(valueOf(values, "Threshold"), 2);
            const bool isScalable = type == "Scalable";
            const int smallest = isScalable ? numberFrom(valueOf(values, "MinSize"), size) : size - tolerance;
            const int largest = isScalable ? numberFrom(valueOf(values, "MaxSize"), size) : size + tolerance;
            theme.directories.push_back({std::string(path), smallest * scale, largest * scale, isScalable});
        }
    }
    return theme;
}

} // namespace swabby
