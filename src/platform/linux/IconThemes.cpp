#include "platform/linux/IconThemes.h"

#include "platform/linux/KernelFile.h"

#include <algorithm>
#include <tuple>

namespace swabby {
namespace {

/// What every other theme falls back to, and where applications put their own icons.
constexpr auto commonTheme = "hicolor";
/// A theme builds on a handful of others; one that says more is broken.
constexpr std::size_t mostThemes = 12;

/// Names come out of files that anybody may have written: they lead to no other folder.
bool isOneName(std::string_view name)
{
    return !name.empty() && !name.starts_with('.') && name.find('/') == std::string_view::npos &&
           name.find('\0') == std::string_view::npos;
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

const IconTheme &IconThemes::theme(const std::string &name)
{
    const auto known = m_themes.find(name);
    if (known != m_themes.end())
        return known->second;
    IconTheme read;
    for (const std::string &folder : m_folders.themes) {
        const std::string index = fileText(folder + '/' + name + "/index.theme");
        if (index.empty())
            continue;
        read = iconThemeFrom(index);
        break;
    }
    return m_themes.emplace(name, std::move(read)).first->second;
}

std::string IconThemes::findIn(const std::string &themeName, const std::string &name, int pixels)
{
    // A larger picture shown smaller looks right and costs less than a drawing; a smaller one shown larger
    // does not look right.
    const auto rank = [pixels](const IconTheme::Directory &directory) {
        if (directory.isScalable)
            return std::tuple(1, pixels < directory.smallest  ? directory.smallest - pixels
                                 : pixels > directory.largest ? pixels - directory.largest
                                                              : 0);
        return pixels > directory.largest ? std::tuple(2, pixels - directory.largest)
                                          : std::tuple(0, std::max(0, directory.smallest - pixels));
    };
    std::vector<IconTheme::Directory> directories = theme(themeName).directories;
    std::stable_sort(
        directories.begin(), directories.end(),
        [&](const IconTheme::Directory &a, const IconTheme::Directory &b) { return rank(a) < rank(b); });
    for (const IconTheme::Directory &directory : directories) {
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
