#include "platform/linux/IconThemes.h"

#include "platform/linux/KernelFile.h"

#include <algorithm>
#include <charconv>
#include <tuple>

namespace swabby {
namespace {

/// What every other theme falls back to, and where applications put their own icons.
constexpr auto commonTheme = "hicolor";
/// A theme builds on a handful of others; one that says more is broken.
constexpr std::size_t mostThemes = 12;
constexpr int largestSize = 4096;

/// Names come out of files that anybody may have written: they lead to no other folder.
bool isOneName(std::string_view name)
{
    return !name.empty() && !name.starts_with('.') && name.find('/') == std::string_view::npos &&
           name.find('\0') == std::string_view::npos;
}

bool staysBelow(std::string_view path)
{
    return !path.empty() && !path.starts_with('/') && path.find("..") == std::string_view::npos;
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

std::string IconThemes::find(const std::string &givenName, int pixels, const std::string &theme)
{
    std::string name = givenName;
    for (const std::string_view ending : {".png", ".svg", ".xpm"})
        if (name.ends_with(ending))
            name.erase(name.size() - ending.size());
    if (!isOneName(name))
        return {};
    for (const std::string &next : inOrder(theme))
        if (std::string file = findIn(next, name, pixels); !file.empty())
            return file;
    for (const std::string &folder : m_folders.pictures)
        for (const char *ending : {".png", ".svg"})
            if (std::string file = folder + '/' + name + ending; isThere(file))
                return file;
    return {};
}

std::vector<std::string> IconThemes::inOrder(const std::string &wanted)
{
    std::vector<std::string> order;
    const auto add = [&](const std::string &name) {
        if (isOneName(name) && order.size() < mostThemes &&
            std::find(order.begin(), order.end(), name) == order.end())
            order.push_back(name);
    };
    add(wanted);
    for (std::size_t place = 0; place < order.size(); ++place)
        for (const std::string &parent : theme(order[place]).parents)
            if (parent != commonTheme)
                add(parent);
    add(commonTheme);
    return order;
}

const IconThemes::Theme &IconThemes::theme(const std::string &name)
{
    const auto known = m_themes.find(name);
    if (known != m_themes.end())
        return known->second;
    Theme read;
    for (const std::string &folder : m_folders.themes) {
        const std::string index = fileText(folder + '/' + name + "/index.theme");
        if (index.empty())
            continue;
        read = themeFrom(index);
        break;
    }
    return m_themes.emplace(name, std::move(read)).first->second;
}

IconThemes::Theme IconThemes::themeFrom(std::string_view index)
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
    Theme theme;
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

std::string IconThemes::findIn(const std::string &themeName, const std::string &name, int pixels)
{
    // A larger picture shown smaller looks right and costs less than a drawing; a smaller one shown larger
    // does not look right.
    const auto rank = [pixels](const Directory &directory) {
        if (directory.isScalable)
            return std::tuple(1, pixels < directory.smallest  ? directory.smallest - pixels
                                 : pixels > directory.largest ? pixels - directory.largest
                                                              : 0);
        return pixels > directory.largest ? std::tuple(2, pixels - directory.largest)
                                          : std::tuple(0, std::max(0, directory.smallest - pixels));
    };
    std::vector<Directory> directories = theme(themeName).directories;
    std::stable_sort(directories.begin(), directories.end(),
                     [&](const Directory &a, const Directory &b) { return rank(a) < rank(b); });
    for (const Directory &directory : directories) {
        for (const std::string &folder : m_folders.themes) {
            std::string file = folder + '/' + themeName + '/' + directory.path + '/' + name;
            for (const char *ending : {".png", ".svg"})
                if (isThere(file + ending))
                    return file + ending;
        }
    }
    return {};
}

} // namespace swabby
