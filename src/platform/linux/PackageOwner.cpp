#include "platform/linux/PackageOwner.h"

#include "platform/linux/KernelFile.h"

namespace swabby {
namespace {

constexpr auto dpkg = "/usr/bin/dpkg-query";
constexpr auto rpm = "/usr/bin/rpm";
constexpr auto pacman = "/usr/bin/pacman";

std::string printed(Shell &shell, const std::string &tool, const std::vector<std::string> &arguments)
{
    return std::string(trimmed(shell.run(tool, arguments, ToolOutput::standardOutput).value_or("")));
}

std::string fromDpkg(Shell &shell, const std::string &file)
{
    std::vector<std::string> search = {"--search", "--", file};
    // Where /bin is a link to /usr/bin, the records may have either.
    if (file.starts_with("/usr/"))
        search.push_back(file.substr(4));
    const std::string package = packageFromSearch(printed(shell, dpkg, search));
    return package.empty()
               ? package
               : printed(shell, dpkg,
                         {"--show", "--showformat=${binary:Package} ${Version}\n", "--", package});
}

} // namespace

std::string packageFromSearch(std::string_view text)
{
    while (const auto line = nextLine(text)) {
        const std::size_t end = line->find_first_of(":,");
        if (end != std::string_view::npos && !line->starts_with("diversion by "))
            return std::string(line->substr(0, end));
    }
    return {};
}

std::string packageOwning(Shell &shell, const std::string &file)
{
    constexpr std::string_view snaps = "/snap/";
    if (file.starts_with(snaps))
        return file.substr(snaps.size(), file.find('/', snaps.size()) - snaps.size()) + " (snap)";
    // A search takes these for a pattern.
    if (!file.starts_with('/') || file.find_first_of("*?[\\") != std::string::npos)
        return {};
    if (shell.has(dpkg))
        return fromDpkg(shell, file);
    if (shell.has(rpm)) {
        const std::string answer =
            printed(shell, rpm,
                    {"--query", "--file", "--queryformat", "%{NAME} %{VERSION}-%{RELEASE}\n", "--", file});
        // It says in words that there is none, and a file may have several.
        return answer.find(" not owned by ") == std::string::npos ? answer.substr(0, answer.find('\n')) : "";
    }
    return shell.has(pacman) ? printed(shell, pacman, {"--query", "--owns", "--quiet", "--", file}) : "";
}

} // namespace swabby
